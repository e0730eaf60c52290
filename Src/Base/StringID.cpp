#include "Base/StringID.h"

#include <string.h>

const char* StringID::s_EmptyString = "";

unsigned StringID::HashString(const char* text) {
  unsigned h = 0;
  for (const unsigned char* c = reinterpret_cast<const unsigned char*>(text); *c != 0; ++c) {
    h = 399283u * (h + 193951u * *c);
  }
  return h;
}

StringID::list* StringID::GetStringTable() {
  // Built on first use; its nodes go at program exit, after any Destroy().
  static list s_StringLists[kBucketCount];
  return s_StringLists;
}

const char* StringID::AddString(const char* text) {
  if (text == 0) return 0;
  list& bucket = GetStringTable()[HashString(text) % kBucketCount];
  for (list::iterator it = bucket.begin(); it != bucket.end(); ++it) {
    // A node emptied by Destroy() is passed over, so that a pool used again
    // after a shut-down (a second title run in one process) stays sound.
    if (*it != 0 && strcmp(*it, text) == 0) return *it;
  }
  const size_t size = strlen(text) + 1;
  char* copy = new char[size];
  memcpy(copy, text, size);
  bucket.push_back(copy);
  return copy;
}

void StringID::Destroy() {
  list* table = GetStringTable();
  for (int i = 0; i < kBucketCount; ++i) {
    // The nodes stay, as on the device; only the texts are freed.
    for (list::iterator it = table[i].begin(); it != table[i].end(); ++it) {
      delete[] * it;
      *it = 0;
    }
  }
}

bool StringID::operator==(const char* other) const {
  if (other == 0) return mString == s_EmptyString;
  if (mString == other) return true;
  return strcmp(mString, other) == 0;
}
