#ifndef SRC_RENDERSYSTEM_XFONTMANAGER_H
#define SRC_RENDERSYSTEM_XFONTMANAGER_H
// Text of the 3D path, from pre-rendered glyph sheets: a font is a table of 256
// glyphs (a .bin file) and a sheet texture, and every character drawn is one quad
// through the batch renderer, so a string costs one draw call. Text takes the
// current GL colour. The game manager creates the manager in every title and
// initialises it only with 3D on.
//
// Characters index the glyph table directly (no character set). In strings:
// "\\" breaks the line for drawString and the box functions, "^" and a number
// above 0 moves the pen right by that many pixels, "|" is a space that does not
// wrap in a box, and carriage return or line feed break the line for
// drawMultiLine and makeTextLineList. The functions differ on purpose in how they
// count spaces, tabs and missing glyphs; each says how.
#include <string>
#include <vector>

#include "Base/XSimpleArray.h"
#include "Base/singleton.h"

class GLTexture;

struct XFontGlyph {
  unsigned short mSheetX;  // top-left in the sheet
  unsigned short mSheetY;
  short mWidth;
  short mHeight;
  short mOffsetX;  // from the pen position
  short mOffsetY;
  short mAdvance;
  unsigned char mExists;  // 1 when mWidth is nonzero
};

struct XFontRecord {
  unsigned int mUnused[2];
  unsigned short mFontHeight;  // line height in pixels
  unsigned short mSheetWidth;  // as the file says; texture coordinates use the texture's size
  unsigned short mSheetHeight;
  unsigned short mEmSize;      // a third of it is the space's width when the space has no advance
  short mCharSpacing;          // added to every character's advance
  XFontGlyph mGlyphs[256];     // by 8-bit character code
};

class XFontManager : public Singleton<XFontManager, Tag_Singleton_Manual> {
 public:
  enum { MAX_FONTS = 7 };
  // The .bin files and sheets of the system's fonts, by index (four of them).
  static const char* const sFontPaths[];
  static const int sSystemFontCount;

  XFontManager();
  // Unloads as unloadAll does.
  ~XFontManager();

  // Loads the system's fonts: each one's .bin file and its sheet (.udi, .tga or
  // .bmp of the same base name). A missing file leaves that font empty or without
  // a sheet, and the next is loaded.
  void initialize();
  // Deletes every font and lets its sheet go.
  void unloadAll();
  // Reads the .bin file at `path` into slot `index`: 1, or 0 when it cannot be
  // opened (the slot then holds a font without glyphs).
  int createFont(int index, const char* path);
  void render() {}
  void registerMenuTextures() {}

  // Metrics.
  int getFontHeight(int font);
  int doesCharExistInFont(int font, char c);
  // Space as any glyph, tab four spaces, a missing glyph as a space, "^" a glyph.
  int getCharacterWidth(int font, unsigned char c);
  // Space and tab as spaces, missing glyphs 0, "^" numbers added.
  int getStringWidth(int font, const char* s);
  // Space as the space's advance (or a third of the em when that is 0), tab a
  // glyph, missing glyphs 0, "^" numbers added: what drawString moves the pen by.
  int getStringLenght(int font, const char* s);
  // As getStringLenght, up to the next space or backslash, with one leading space.
  int getWordLenght(int font, const char* s);
  // Lines the box functions make of `s` in a box `boxWidth` wide, times the line height.
  int getTextHeight(int font, const char* s, int boxWidth);
  int getMaxSectionLengthInString(int font, const char* s, int maxWidth);

  // Drawing, in screen pixels from the top left, at the pen's line top.
  // `flag` has no effect. Rows of each glyph above `cropTop` and, when
  // `cropBottom` is not negative, below it (both from y) are cut.
  void drawString(int font, int x, int y, const char* s, int cropTop, int cropBottom, bool flag);
  void drawString(int font, int x, int y, const char* s, bool flag);
  void drawStringRight(int font, int x, int y, const char* s);
  void drawStringCenter(int font, int x, int y, const char* s);
  // Wrapped at spaces into lines narrower than `boxWidth`; a wider word gets a
  // line of its own, unbroken.
  void drawStringInBox(int font, int x, int y, const char* s, int boxWidth, int lineGap);
  void drawStringCenterInBox(int font, int x, int y, const char* s, int boxWidth, int lineGap);
  // The lines of the box scrolled up by `scroll` pixels, seen through a view
  // `viewHeight` high at y.
  void drawStringInScrollBox(int font, int x, int y, const char* s, int boxWidth, int viewHeight, int scroll);
  // One line in the rectangle: flags 2 bottom, 8 middle, else top; 1 right, 4
  // centre, else left.
  void draw(int font, const char* s, int x1, int y1, int x2, int y2, unsigned int flags);
  // At most `maxChars` characters (none below 1: all); backslash and "^" are glyphs.
  void drawSingleLine(int font, int x, int y, const char* s, int maxChars);
  // As drawSingleLine; a carriage return or line feed moves down a line without
  // returning to x.
  void drawMultiLine(int font, int x, int y, const char* s, int maxChars);

  // Splitting into words (leading spaces, then up to a space or tab; a line break
  // ends its word). The buffer form writes them one after the other, terminated,
  // as many as fit in `outSize`, and returns the count.
  int breakToWordListA(const char* s, char* out, unsigned int outSize);
  int breakToWordListA(const char* s, std::vector<std::string>& words);
  // Lines of the words, by width; an over-wide first word (or every first word,
  // with `hyphenate`) is split with "-". Returns the words and pieces placed.
  int makeTextLineList(int font, int maxWidth, std::vector<std::string>& words, std::vector<std::string>& lines,
                       bool hyphenate);
  // Lines of `s`, broken at the first space past `maxWidth` and at line breaks.
  // Returns the lines pushed with text.
  int makeTextLineList(int font, int maxWidth, const char* s, std::vector<std::string>& lines);

  XFontRecord* mFonts[MAX_FONTS];  // owned; null when free
  int mFontCount;
  char mPixelEscapeChar;  // '^'
  XSimpleArray<GLTexture*, MAX_FONTS> mFontTextures;  // each font's sheet, same index

 private:
  XFontRecord* font(int index) const;
  GLTexture* sheet(int index) const;
  // The next line of the box functions from `p` into `line` (512 bytes); returns
  // where the text goes on.
  const char* nextBoxLine(int font, const char* p, int boxWidth, bool barAsSpace, char* line);
  void drawLine(int font, int x, int y, const char* s, int maxChars, bool multiLine);

  XFontManager(const XFontManager&);
  XFontManager& operator=(const XFontManager&);
};

#endif
