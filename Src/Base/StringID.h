#ifndef SRC_BASE_STRINGID_H
#define SRC_BASE_STRINGID_H
// A handle to an interned text: two StringID made from equal text hold the same
// pointer, so most comparisons are one pointer compare.
#include <list>

class StringID {
 public:
  typedef std::list<char*> list;
  enum { kBucketCount = 61 };

  // The constant empty text an unset StringID holds.
  static const char* s_EmptyString;

  StringID() : mString(s_EmptyString) {}
  // Pools `text`; a null text makes an unset StringID.
  explicit StringID(const char* text) : mString(text ? AddString(text) : s_EmptyString) {}

  const char* c_str() const { return mString; }

  bool operator==(const char* other) const;
  bool operator==(const StringID& other) const { return mString == other.mString; }
  bool operator!=(const StringID& other) const { return mString != other.mString; }

  static unsigned HashString(const char* text);
  // The pooled copy of `text`, made on first use; null for null.
  static const char* AddString(const char* text);
  // Frees every pooled text. Every StringID dangles afterwards: shut-down only.
  static void Destroy();
  // The pool: an array of kBucketCount lists.
  static list* GetStringTable();

 private:
  const char* mString;
};

#endif
