#include <GLES/gl.h>
#include <assert.h>
#include <stdlib.h>
#include <string.h>

#include "Base/File.h"
#include "RenderSystem/AnimatedModel2DRender.h"
#include "RenderSystem/GLTexture.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/XFontManager.h"

const char* const XFontManager::sFontPaths[] = {
    "res/Font/VTCurry_18",
    "res/Font/Pippin_18",
    "res/Font/VTCurry_20",
    "res/Font/VTAndaleSans_19",
};
const int XFontManager::sSystemFontCount = sizeof sFontPaths / sizeof sFontPaths[0];

namespace {

const int kLineBytes = 512;  // the box functions' line buffer, terminator included
const int kSpace = ' ';

// The glyph record's offset bytes: 129 to 255 stand for value - 256; 128 stays +128.
short OffsetFromByte(unsigned char value) { return value > 128 ? short(value - 256) : short(value); }

const XFontGlyph& Glyph(const XFontRecord& record, char c) { return record.mGlyphs[(unsigned char)c]; }

// sp + the space's advance: the space of most width functions.
int SpaceWidth(const XFontRecord& record) { return record.mCharSpacing + record.mGlyphs[kSpace].mAdvance; }
int TabWidth(const XFontRecord& record) { return record.mGlyphs[kSpace].mAdvance * 4 + record.mCharSpacing; }
// The space of getStringLenght, getWordLenght and drawString.
int PenSpaceWidth(const XFontRecord& record) {
  const int advance = record.mGlyphs[kSpace].mAdvance;
  return (advance != 0 ? advance : record.mEmSize / 3) + record.mCharSpacing;
}
int GlyphWidth(const XFontRecord& record, char c) {
  const XFontGlyph& glyph = Glyph(record, c);
  return glyph.mExists ? record.mCharSpacing + glyph.mAdvance : 0;
}

// `p` at the escape character: the number after it, and `p` left on its last
// digit (found by dividing the number down, as the device does: leading zeros
// are not skipped).
int EscapePixels(const char*& p) {
  const int pixelNum = atoi(p + 1);
  assert(pixelNum > 0);
  for (int n = pixelNum; n != 0; n /= 10) ++p;
  return pixelNum;
}

// One glyph quad into the current batch, with texture coordinates of the sheet
// rows top to bottom; `downFirst` orders the vertices left-top, left-bottom,
// right-bottom, right-top instead of left-top, right-top, right-bottom, left-bottom.
void WriteQuad(float left, float top, float width, float height, float sheetX, float sheetTop, float sheetBottom,
               const GLTexture& texture, bool downFirst) {
  AnimatedModel2DRender& render = AnimatedModel2DRender::sInstance();
  AnimatedModel2DRender::BatchBuffer& batch = render.mBatches[render.mCurrentBatch];
  const float textureWidth = float(texture.mWidth), textureHeight = float(texture.mHeight);
  const GLfixed x0 = AnimatedModel2DRender::PixelToFixed(left);
  const GLfixed x1 = AnimatedModel2DRender::PixelToFixed(left + width);
  const GLfixed y0 = AnimatedModel2DRender::PixelToFixed(top);
  const GLfixed y1 = AnimatedModel2DRender::PixelToFixed(top + height);
  const GLfixed u0 = AnimatedModel2DRender::TexelToFixed(sheetX, textureWidth);
  const GLfixed u1 = AnimatedModel2DRender::TexelToFixed(sheetX + width, textureWidth);
  const GLfixed v0 = AnimatedModel2DRender::TexelToFixed(sheetTop, textureHeight);
  const GLfixed v1 = AnimatedModel2DRender::TexelToFixed(sheetBottom, textureHeight);
  const GLfixed across[8] = {x0, y0, x1, y0, x1, y1, x0, y1};
  const GLfixed acrossUV[8] = {u0, v0, u1, v0, u1, v1, u0, v1};
  const GLfixed down[8] = {x0, y0, x0, y1, x1, y1, x1, y0};
  const GLfixed downUV[8] = {u0, v0, u0, v1, u1, v1, u1, v0};
  memcpy(batch.mVertexPtr, downFirst ? down : across, sizeof across);
  memcpy(batch.mTexCoordPtr, downFirst ? downUV : acrossUV, sizeof acrossUV);
  batch.mVertexPtr += 8;
  batch.mTexCoordPtr += 8;
}

}  // namespace

XFontManager::XFontManager() : mFontCount(0), mPixelEscapeChar('^') {
  for (int i = 0; i < MAX_FONTS; ++i) mFonts[i] = 0;
}

XFontManager::~XFontManager() { unloadAll(); }

XFontRecord* XFontManager::font(int index) const {
  // An index outside the slots has no font, rather than a read beyond them.
  return index >= 0 && index < MAX_FONTS ? mFonts[index] : 0;
}

GLTexture* XFontManager::sheet(int index) const {
  return index >= 0 && index < mFontTextures.size() ? mFontTextures[index] : 0;
}

void XFontManager::initialize() {
  unloadAll();
  for (int i = 0; i < sSystemFontCount; ++i) {
    const std::string base = sFontPaths[i];
    createFont(i, (base + ".bin").c_str());
    mFontTextures.push_back(gxGetTextureManager()->LoadTextureNoExpand(base.c_str(), 0));
    ++mFontCount;
  }
}

void XFontManager::unloadAll() {
  for (int i = 0; i < MAX_FONTS; ++i) {
    delete mFonts[i];
    mFonts[i] = 0;
    GLTexture* texture = sheet(i);
    if (texture != 0 && GLTextureManager::instance_ != 0) gxGetTextureManager()->ReleaseTexture(texture);
  }
  mFontTextures.clear();
  mFontCount = 0;
}

int XFontManager::createFont(int index, const char* path) {
  if (index < 0 || index >= MAX_FONTS) return 0;
  // A font loaded into the slot before is let go, not leaked; the new record is
  // cleared whole, header included, so a file that cannot be read leaves zeros.
  delete mFonts[index];
  XFontRecord* record = new XFontRecord();
  memset(record, 0, sizeof *record);
  mFonts[index] = record;

  File file;
  if (!file.open(path, "rb")) return 0;
  // A file that ends early reads as zeros from there on.
  record->mEmSize = file.readUChar();
  record->mCharSpacing = file.readUChar();
  record->mFontHeight = file.readUChar();
  record->mSheetWidth = file.readUChar();
  record->mSheetWidth |= (unsigned short)(file.readUChar() << 8);
  record->mSheetHeight = file.readUChar();
  record->mSheetHeight |= (unsigned short)(file.readUChar() << 8);
  for (int c = 0; c < 256; ++c) {
    XFontGlyph& glyph = record->mGlyphs[c];
    glyph.mSheetX = file.readUChar();
    glyph.mSheetX |= (unsigned short)(file.readUChar() << 8);
    glyph.mSheetY = file.readUChar();
    glyph.mSheetY |= (unsigned short)(file.readUChar() << 8);
    glyph.mWidth = file.readUChar();
    glyph.mHeight = file.readUChar();
    glyph.mOffsetX = OffsetFromByte(file.readUChar());
    glyph.mOffsetY = OffsetFromByte(file.readUChar());
    glyph.mAdvance = file.readUChar();
    glyph.mExists = glyph.mWidth != 0 ? 1 : 0;
  }
  file.close();
  return 1;
}

int XFontManager::getFontHeight(int index) {
  XFontRecord* record = font(index);
  return record != 0 ? record->mFontHeight : 0;
}

int XFontManager::doesCharExistInFont(int index, char c) {
  XFontRecord* record = font(index);
  return record != 0 && Glyph(*record, c).mExists ? 1 : 0;
}

int XFontManager::getCharacterWidth(int index, unsigned char c) {
  XFontRecord* record = font(index);
  if (record == 0) return 0;
  if (c == '\t') return TabWidth(*record);
  const XFontGlyph& glyph = record->mGlyphs[c];
  return glyph.mExists ? record->mCharSpacing + glyph.mAdvance : SpaceWidth(*record);
}

int XFontManager::getStringWidth(int index, const char* s) {
  XFontRecord* record = font(index);
  if (record == 0 || s == 0) return 0;
  int width = 0;
  for (const char* p = s; *p != 0; ++p) {
    if (*p == ' ') {
      width += SpaceWidth(*record);
    } else if (*p == '\t') {
      width += TabWidth(*record);
    } else if (*p == mPixelEscapeChar) {
      width += EscapePixels(p);
    } else {
      width += GlyphWidth(*record, *p);
    }
  }
  return width;
}

int XFontManager::getStringLenght(int index, const char* s) {
  XFontRecord* record = font(index);
  if (record == 0 || s == 0) return 0;
  int width = 0;
  for (const char* p = s; *p != 0; ++p) {
    if (*p == ' ') {
      width += PenSpaceWidth(*record);
    } else if (*p == mPixelEscapeChar) {
      width += EscapePixels(p);
    } else {
      width += GlyphWidth(*record, *p);
    }
  }
  return width;
}

int XFontManager::getWordLenght(int index, const char* s) {
  XFontRecord* record = font(index);
  if (record == 0 || s == 0) return 0;
  const char* p = s;
  int width = 0;
  if (*p == ' ') {
    width += PenSpaceWidth(*record);
    ++p;
  }
  for (; *p != 0 && *p != ' ' && *p != '\\'; ++p) {
    if (*p == mPixelEscapeChar) {
      width += EscapePixels(p);
    } else {
      width += GlyphWidth(*record, *p);
    }
  }
  return width;
}

const char* XFontManager::nextBoxLine(int index, const char* p, int boxWidth, bool barAsSpace, char* line) {
  int length = 0;
  line[0] = 0;
  int lineWidth = 0;
  int word = getWordLenght(index, p);
  for (;;) {
    const int sum = lineWidth + word;
    // Nothing is taken at a backslash or the end (a box too narrow for any word
    // would otherwise take empty words there for ever), nor into a full line.
    const bool more = *p != '\\' && *p != 0 && length < kLineBytes - 1;
    const bool take = more && (sum < boxWidth || (word >= boxWidth && lineWidth == 0));
    if (!take) break;
    if (*p == ' ') {
      line[length++] = ' ';
      ++p;
    }
    for (; *p != 0 && *p != ' ' && *p != '\\' && length < kLineBytes - 1; ++p) {
      line[length++] = barAsSpace && *p == '|' ? ' ' : *p;
    }
    line[length] = 0;
    word = getWordLenght(index, p);
    lineWidth = sum;
  }
  if (*p == ' ' || *p == '\\') ++p;
  return p;
}

int XFontManager::getTextHeight(int index, const char* s, int boxWidth) {
  XFontRecord* record = font(index);
  if (record == 0 || s == 0) return 0;
  char line[kLineBytes];
  int lines = 0;
  const char* p = s;
  do {
    p = nextBoxLine(index, p, boxWidth, false, line);
    ++lines;
  } while (*p != 0);
  return lines * record->mFontHeight;
}

int XFontManager::getMaxSectionLengthInString(int index, const char* s, int maxWidth) {
  if (font(index) == 0 || s == 0) return 0;
  int cur = 0, best = 0;
  bool seen = false;
  const char* p = s;
  while (*p != 0) {
    if (*p == '\\') {
      if (cur > best) best = cur;
      cur = 0;
      ++p;
      continue;
    }
    const int word = getWordLenght(index, p);
    const int sum = cur + word;
    if (seen && sum > maxWidth) {
      if (cur > best) best = cur;
      cur = 0;
    } else {
      cur = sum;
    }
    seen = true;
    // Past the word as getWordLenght delimits it.
    if (*p == ' ') ++p;
    while (*p != 0 && *p != ' ' && *p != '\\') ++p;
  }
  return best != 0 ? best : cur;
}

void XFontManager::drawString(int index, int x, int y, const char* s, int cropTop, int cropBottom, bool) {
  XFontRecord* record = font(index);
  if (s == 0 || record == 0) return;
  if (cropTop < 0) cropTop = 0;
  AnimatedModel2DRender& render = AnimatedModel2DRender::sInstance();
  GLTexture* texture = sheet(index);
  render.begin(0, 1);
  int px = x, py = y;
  for (const char* p = s; *p != 0; ++p) {
    if (*p == '\\') {
      py += record->mFontHeight;
      px = x;
      continue;
    }
    if (*p == ' ') {
      px += PenSpaceWidth(*record);
      continue;
    }
    if (*p == mPixelEscapeChar) {
      px += EscapePixels(p);
      continue;
    }
    const XFontGlyph& glyph = Glyph(*record, *p);
    if (!glyph.mExists || texture == 0) continue;
    int top = glyph.mOffsetY - cropTop;
    int sheetTop = glyph.mSheetY;
    if (top < 0 && glyph.mOffsetY >= 0) {
      sheetTop += cropTop - glyph.mOffsetY;
      top = 0;
    }
    int sheetBottom = glyph.mSheetY + glyph.mHeight;
    if (cropBottom >= 0 && cropBottom - glyph.mOffsetY <= glyph.mHeight) {
      sheetBottom = glyph.mSheetY + cropBottom - glyph.mOffsetY;
    }
    // A glyph cropped away whole is not drawn: a quad of no or negative height
    // would show rows outside the crop.
    if (sheetBottom > sheetTop) {
      render.swapTexture(texture->mTextureID);
      WriteQuad(float(px + glyph.mOffsetX), float(py + top), float(glyph.mWidth), float(sheetBottom - sheetTop),
                float(glyph.mSheetX), float(sheetTop), float(sheetBottom), *texture, false);
    }
    px += record->mCharSpacing + glyph.mAdvance;
  }
  render.end();
}

void XFontManager::drawString(int index, int x, int y, const char* s, bool flag) {
  glEnable(GL_TEXTURE_2D);
  glDisable(GL_DEPTH_TEST);
  drawString(index, x, y, s, 0, -1, flag);
}

void XFontManager::drawStringRight(int index, int x, int y, const char* s) {
  drawString(index, x - getStringLenght(index, s), y, s, false);
}

void XFontManager::drawStringCenter(int index, int x, int y, const char* s) {
  drawString(index, x - getStringLenght(index, s) / 2, y, s, false);
}

void XFontManager::drawStringInBox(int index, int x, int y, const char* s, int boxWidth, int lineGap) {
  XFontRecord* record = font(index);
  if (record == 0 || s == 0) return;
  char line[kLineBytes];
  const char* p = s;
  do {
    p = nextBoxLine(index, p, boxWidth, true, line);
    drawString(index, x, y, line, false);
    y += record->mFontHeight + lineGap;
  } while (*p != 0);
}

void XFontManager::drawStringCenterInBox(int index, int x, int y, const char* s, int boxWidth, int lineGap) {
  XFontRecord* record = font(index);
  if (record == 0 || s == 0) return;
  char line[kLineBytes];
  const char* p = s;
  do {
    p = nextBoxLine(index, p, boxWidth, true, line);
    drawString(index, x - getStringLenght(index, line) / 2, y, line, false);
    y += record->mFontHeight + lineGap;
  } while (*p != 0);
}

void XFontManager::drawStringInScrollBox(int index, int x, int y, const char* s, int boxWidth, int viewHeight,
                                         int scroll) {
  XFontRecord* record = font(index);
  if (record == 0 || s == 0) return;
  char line[kLineBytes];
  const int lineHeight = record->mFontHeight;
  int r = scroll;
  int cy = y;
  const char* p = s;
  do {
    p = nextBoxLine(index, p, boxWidth, true, line);
    if (r < lineHeight) {
      drawString(index, x, cy, line, r, viewHeight + y - cy, false);
      cy += lineHeight - (r > 0 ? r : 0);
      if (cy - y >= viewHeight) break;
    }
    r -= lineHeight;
  } while (*p != 0);
}

void XFontManager::draw(int index, const char* s, int x1, int y1, int x2, int y2, unsigned int flags) {
  const int height = getFontHeight(index);
  int y = y1;
  if (flags & 2) {
    y = y2 - height;
  } else if (flags & 8) {
    y = (y2 + y1) / 2 - height / 2;
  }
  const int width = getStringWidth(index, s);
  int x = x1;
  if (flags & 1) {
    x = x2 - width;
  } else if (flags & 4) {
    x = (x2 + x1) / 2 - width / 2;
  }
  drawSingleLine(index, x, y, s, -1);
}

void XFontManager::drawSingleLine(int index, int x, int y, const char* s, int maxChars) {
  drawLine(index, x, y, s, maxChars, false);
}

void XFontManager::drawMultiLine(int index, int x, int y, const char* s, int maxChars) {
  drawLine(index, x, y, s, maxChars, true);
}

void XFontManager::drawLine(int index, int x, int y, const char* s, int maxChars, bool multiLine) {
  XFontRecord* record = font(index);
  GLTexture* texture = sheet(index);
  if (record == 0 || texture == 0 || s == 0) return;
  AnimatedModel2DRender& render = AnimatedModel2DRender::sInstance();
  render.begin(0, 1);
  render.swapTexture(texture->mTextureID);
  int px = x, py = y;
  for (int i = 0; s[i] != 0 && (maxChars < 1 || i < maxChars); ++i) {
    const char c = s[i];
    if (multiLine && (c == '\r' || c == '\n')) {
      py += record->mFontHeight;  // the pen stays where it was across
    } else if (c == ' ') {
      px += SpaceWidth(*record);
    } else if (c == '\t') {
      px += TabWidth(*record);
    } else if (Glyph(*record, c).mExists) {
      const XFontGlyph& glyph = Glyph(*record, c);
      WriteQuad(float(px + glyph.mOffsetX), float(py + glyph.mOffsetY), float(glyph.mWidth), float(glyph.mHeight),
                float(glyph.mSheetX), float(glyph.mSheetY), float(glyph.mSheetY + glyph.mHeight), *texture, true);
      px += record->mCharSpacing + glyph.mAdvance;
    }
  }
  render.end();
}

namespace {
// The end of the word that starts at `p` (leading spaces, then characters up to a
// space or tab; a line break ends the word and belongs to it), or null when only
// spaces are left.
const char* WordEnd(const char* p) {
  while (*p == ' ') ++p;
  if (*p == 0) return 0;
  // The first character is the word's whatever it is (a tab left by the word before).
  for (;;) {
    const char c = *p++;
    if (c == '\r' || c == '\n' || *p == 0 || *p == ' ' || *p == '\t') return p;
  }
}
}  // namespace

int XFontManager::breakToWordListA(const char* s, char* out, unsigned int outSize) {
  if (s == 0 || out == 0 || outSize == 0) return 0;
  int count = 0;
  unsigned int used = 0;
  for (const char* p = s, *end; (end = WordEnd(p)) != 0; p = end) {
    const unsigned int length = unsigned(end - p);
    if (used + length + 1 > outSize) break;
    memcpy(out + used, p, length);
    out[used + length] = 0;
    used += length + 1;
    ++count;
  }
  return count;
}

int XFontManager::breakToWordListA(const char* s, std::vector<std::string>& words) {
  if (s == 0) return 0;
  int count = 0;
  for (const char* p = s, *end; (end = WordEnd(p)) != 0; p = end) {
    words.push_back(std::string(p, end));
    ++count;
  }
  return count;
}

namespace {
// A line into the list: a leading space is dropped from every line but the first.
void PushLine(std::vector<std::string>& lines, const std::string& line) {
  if (!lines.empty() && !line.empty() && line[0] == ' ') {
    lines.push_back(line.substr(1));
  } else {
    lines.push_back(line);
  }
}
bool EndsInLineBreak(const std::string& word) {
  return !word.empty() && (word[word.size() - 1] == '\n' || word[word.size() - 1] == '\r');
}
}  // namespace

int XFontManager::makeTextLineList(int index, int maxWidth, std::vector<std::string>& words,
                                   std::vector<std::string>& lines, bool hyphenate) {
  if (words.empty()) return 0;
  int result = 0;
  int lineWidth = 0;
  bool firstOnLine = true;
  for (size_t i = 0; i < words.size();) {
    const std::string& word = words[i];
    const int width = getStringWidth(index, word.c_str());
    if (!firstOnLine) {
      lineWidth += width;
      if (lineWidth > maxWidth) {
        lineWidth = 0;
        firstOnLine = true;
        continue;  // the same word, first on a new line
      }
      lines.back() += word;
      ++result;
      ++i;
      continue;
    }
    lineWidth = width;
    if (width <= maxWidth && !hyphenate) {
      PushLine(lines, word);
      ++result;
    } else {
      std::string piece;
      int pieceWidth = 0;
      for (size_t k = 0; k < word.size(); ++k) {
        const int charWidth = getCharacterWidth(index, (unsigned char)word[k]);
        if (k > 0 && pieceWidth + charWidth > maxWidth) {
          piece += "-";
          lines.push_back(piece);
          ++result;
          piece.clear();
          pieceWidth = 0;
        }
        piece += word[k];
        pieceWidth += charWidth;
      }
      PushLine(lines, piece);
      ++result;
    }
    firstOnLine = EndsInLineBreak(word);
    if (firstOnLine) lineWidth = 0;
    ++i;
  }
  return result;
}

int XFontManager::makeTextLineList(int index, int maxWidth, const char* s, std::vector<std::string>& lines) {
  if (s == 0) return 0;
  std::string buffer;
  int width = 0;
  bool lineStart = true;
  int count = 0;
  for (const char* p = s; *p != 0; ++p) {
    const char c = *p;
    if (c == '\r' || c == '\n') {
      if (buffer.empty()) {
        lines.push_back(std::string());
      } else {
        PushLine(lines, buffer);
        buffer.clear();
        ++count;
      }
      width = 0;
      lineStart = true;
      continue;
    }
    if (!lineStart) {
      width += getCharacterWidth(index, (unsigned char)c);
      if (width <= maxWidth || c != ' ') {
        buffer += c;
        continue;
      }
      PushLine(lines, buffer);
      buffer.clear();
      ++count;
    }
    // The first character of a line, or the space that broke the one before.
    width = getCharacterWidth(index, (unsigned char)c);
    buffer += c;
    lineStart = false;
  }
  if (buffer.empty()) return count;
  PushLine(lines, buffer);
  return count + 1;
}
