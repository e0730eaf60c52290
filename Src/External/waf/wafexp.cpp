#include "External/waf/wafexp.h"

#include <assert.h>
#include <stdlib.h>
#include <string.h>
#include <zlib.h>

// One macro layer more than assert itself, so that NULL is expanded before the
// expression is turned into the text of the message.
#define WAF_ASSERT(expr) assert(expr)

namespace {

const unsigned char kMagic[4] = {'w', 'a', 'f', 0};
// The smallest directory record: a length, a one-byte name, size and offset.
const long kSmallestRecord = 4 + 1 + 4 + 4;

int32_t GetI32(const unsigned char* bytes) {
  return int32_t(uint32_t(bytes[0]) | uint32_t(bytes[1]) << 8 | uint32_t(bytes[2]) << 16 | uint32_t(bytes[3]) << 24);
}

// Four bytes from the stream as a little-endian number: false on a short read or
// a stream in error.
bool ReadI32(FILE* stream, int32_t* value) {
  unsigned char bytes[4];
  if (fread(bytes, 1, 4, stream) != 4 || ferror(stream)) return false;
  *value = GetI32(bytes);
  return true;
}

// Offsets are 32-bit numbers; a sum beyond that wraps, and the offset it makes
// then fails at the seek instead of overflowing.
int32_t AddOffsets(int32_t a, int32_t b) { return int32_t(uint32_t(a) + uint32_t(b)); }

bool BlockLengthValid(int32_t length) { return length >= 0 && length <= WAF_COMPRESSED_MAX; }

// A negative size in a damaged directory counts as an empty file for the block
// table and for seeking, so that no block number is ever negative.
int32_t UsableSize(const waf_entry* entry) { return entry->size < 0 ? 0 : entry->size; }

// Bytes from `offset` to the end of the host file, 0 when it can't be told.
long BytesAfter(FILE* stream, long offset) {
  if (fseek(stream, 0, SEEK_END) != 0) return 0;
  const long end = ftell(stream);
  return end > offset ? end - offset : 0;
}

// The terminator of a name 260 bytes long would fall on the hash that follows
// it, so such a name is never found; here it is never compared.
bool NameMatches(const waf_entry* entry, const char* filename) {
  return memchr(entry->name, 0, sizeof entry->name) != 0 && strcmp(entry->name, filename) == 0;
}

// Opens the stream and reads header and directory into the cleared `arc`;
// false on any failure.
bool ReadArchive(waf_archive* arc, const char* filename, int offset) {
  // The stream.
  arc->stream = fopen(filename, "rb");
  if (arc->stream == 0) return false;

  // The header, at the archive's start.
  unsigned char header[WAF_HEADER_SIZE];
  if (fseek(arc->stream, offset, SEEK_SET) != 0) return false;
  if (fread(header, 1, sizeof header, arc->stream) != sizeof header || ferror(arc->stream)) return false;
  if (memcmp(header, kMagic, sizeof kMagic) != 0 || uint32_t(GetI32(header + 4)) != WAF_VERSION) return false;

  // The table of entries; none for a count of 0 or below. A count larger than
  // the records the rest of the file can hold fails here, as its reading would at
  // the end of the data, without the allocation for it.
  arc->count = GetI32(header + 8);
  const long directory = long(offset) + WAF_HEADER_SIZE;
  if (arc->count > BytesAfter(arc->stream, directory) / kSmallestRecord) return false;
  if (fseek(arc->stream, directory, SEEK_SET) != 0) return false;
  if (arc->count > 0) arc->entries = static_cast<waf_entry**>(calloc(size_t(arc->count), sizeof(waf_entry*)));
  if (arc->entries == 0) return false;

  // The directory, record by record.
  for (int32_t i = 0; i < arc->count; ++i) {
    waf_entry* entry = static_cast<waf_entry*>(calloc(1, sizeof(waf_entry)));
    if (entry == 0) return false;
    arc->entries[i] = entry;

    int32_t length;
    if (!ReadI32(arc->stream, &length) || length < 1 || length > WAF_NAME_MAX) return false;
    char name[WAF_NAME_MAX + 1];
    if (fread(name, 1, size_t(length), arc->stream) != size_t(length)) return false;
    name[length] = 0;
    entry->hash = waf_strhash(name);
    memcpy(entry->name, name, length < WAF_NAME_MAX ? size_t(length) + 1 : size_t(WAF_NAME_MAX));

    // A record cut short by the end of the file fails like a short name.
    int32_t dataOffset;
    if (!ReadI32(arc->stream, &entry->size) || !ReadI32(arc->stream, &dataOffset)) return false;
    entry->offset = AddOffsets(dataOffset, offset);
  }
  return true;
}

}  // namespace

uint32_t waf_strhash(const char* str) {
  WAF_ASSERT(str != NULL);
  uint32_t hash = 0;
  for (const unsigned char* p = reinterpret_cast<const unsigned char*>(str); *p != 0; ++p) hash = 131 * hash + *p;
  return hash & 0x7fffffff;
}

waf_archive* waf_archive_open(const char* filename, int offset) {
  WAF_ASSERT(filename != NULL);
  WAF_ASSERT(offset >= 0);
  waf_archive* arc = static_cast<waf_archive*>(calloc(1, sizeof(waf_archive)));
  if (arc == 0) return 0;
  if (!ReadArchive(arc, filename, offset)) {
    // Whatever was built goes.
    waf_archive_close(arc);
    return 0;
  }
  return arc;
}

void waf_archive_close(waf_archive* arc) {
  if (arc == 0) return;
  if (arc->stream != 0) fclose(arc->stream);
  if (arc->entries != 0) {
    for (int32_t i = 0; i < arc->count; ++i) free(arc->entries[i]);
    free(arc->entries);
  }
  free(arc);
}

waf_file* waf_open(waf_archive* arc, const char* filename) {
  WAF_ASSERT(arc != NULL);
  WAF_ASSERT(filename != NULL);

  // The first entry of equal hash and equal name.
  const uint32_t hash = waf_strhash(filename);
  waf_entry* entry = 0;
  for (int32_t i = 0; i < arc->count && entry == 0; ++i) {
    if (arc->entries[i]->hash == hash && NameMatches(arc->entries[i], filename)) entry = arc->entries[i];
  }
  if (entry == 0) return 0;

  // The file, and a table of block offsets with one element more than
  // the blocks, so that a seek to the very end of a file whose size is a whole
  // number of blocks, and the first block of an empty file, have their place.
  waf_file* file = static_cast<waf_file*>(calloc(1, sizeof(waf_file)));
  if (file == 0) return 0;
  const int32_t blocks = int32_t((int64_t(UsableSize(entry)) + WAF_BLOCK_SIZE - 1) / WAF_BLOCK_SIZE) + 1;
  file->block_offsets = static_cast<int32_t*>(calloc(size_t(blocks), sizeof(int32_t)));
  if (file->block_offsets == 0) {
    free(file);
    return 0;
  }
  file->stream = arc->stream;
  file->entry = entry;
  file->position = 0;
  file->current_block = -1;
  file->next_block = entry->offset;
  file->block_offsets[0] = entry->offset;
  file->buffer_pos = 0;
  file->buffer_len = 0;
  return file;
}

void waf_close(waf_file* file) {
  if (file == 0) return;
  free(file->block_offsets);
  memset(file, 0, sizeof(waf_file));
  free(file);
}

int waf_next_block(waf_file* file) {
  // Every load seeks: any number of files may share the stream. A seek that
  // fails is a failure, rather than a read from wherever the stream stands.
  if (fseek(file->stream, file->next_block, SEEK_SET) != 0) return 1;

  // The compressed length: 0 ends the chain.
  int32_t length;
  if (!ReadI32(file->stream, &length)) return 1;
  if (length == 0) return 2;
  if (!BlockLengthValid(length)) return 1;

  // The compressed data, into a scratch on the stack: a load allocates nothing.
  unsigned char scratch[WAF_COMPRESSED_MAX];
  if (fread(scratch, 1, size_t(length), file->stream) != size_t(length) || ferror(file->stream)) return 1;

  // One zlib stream, unpacking to at most a block.
  file->buffer_len = WAF_BLOCK_SIZE;
  uLongf unpacked = uLongf(file->buffer_len);
  if (uncompress(file->buffer, &unpacked, scratch, uLong(length)) != Z_OK) {
    // The buffer now holds part of a block that isn't there: it counts as empty
    // and loaded from nowhere, so that a later seek loads its block again.
    file->buffer_len = 0;
    file->current_block = -1;
    return 1;
  }
  file->buffer_len = int32_t(unpacked);

  // The chain moves on.
  file->buffer_pos = 0;
  file->current_block = file->next_block;
  file->next_block = AddOffsets(file->next_block, 4 + length);
  return 0;
}

int waf_read(waf_file* file, void* buff, int readsize) {
  WAF_ASSERT(buff != NULL);
  WAF_ASSERT(readsize >= 0);
  if (file == 0) return -1;

  unsigned char* out = static_cast<unsigned char*>(buff);
  int done = 0;
  // A fresh file's buffer is empty, so even a read of 0 bytes loads its first block.
  do {
    // An exhausted buffer takes the next block of the chain.
    if (file->buffer_pos >= file->buffer_len) {
      const int status = waf_next_block(file);
      if (status == 1) return -1;
      if (status == 2) return done;
      continue;
    }
    // As much as is wanted and left in the buffer. The position is a 32-bit
    // number: a damaged chain that holds more than that ends there.
    int count = readsize - done;
    if (count > file->buffer_len - file->buffer_pos) count = file->buffer_len - file->buffer_pos;
    if (count > INT32_MAX - file->position) count = INT32_MAX - file->position;
    if (count == 0) return done;
    memcpy(out + done, file->buffer + file->buffer_pos, size_t(count));
    file->buffer_pos += count;
    file->position += count;
    done += count;
  } while (done < readsize);
  return done;
}

int waf_seek(waf_file* file, int offset, int whence) {
  int64_t position;
  switch (whence) {
    case 0: position = offset; break;
    case 1:
      // A null file has no position to count from.
      if (file == 0) return -1;
      position = int64_t(file->position) + offset;
      break;
    case 2: position = int64_t(waf_size(file)) + offset; break;
    default: return -1;
  }
  // Beyond 32 bits: a position past every end is clamped anyway, and one before
  // the start still fails the assertion.
  if (position > INT32_MAX) position = INT32_MAX;
  if (position < INT32_MIN) position = INT32_MIN;
  return waf_seekabs(file, int(position));
}

int waf_seekabs(waf_file* file, int position) {
  WAF_ASSERT(position >= 0);
  if (file == 0) return -1;

  // Clamped to the size; the block by division.
  const int32_t size = UsableSize(file->entry);
  if (position >= size) position = size;
  const int32_t block = position / WAF_BLOCK_SIZE;

  // An offset not yet known is learnt by walking the block headers from
  // the first block, storing every offset on the way.
  int32_t blockOffset = file->block_offsets[block];
  if (blockOffset < 1) {
    blockOffset = file->entry->offset;
    if (fseek(file->stream, blockOffset, SEEK_SET) != 0) return -1;
    for (int32_t i = 0; i < block; ++i) {
      int32_t length;
      if (!ReadI32(file->stream, &length) || !BlockLengthValid(length)) return -1;
      if (fseek(file->stream, length, SEEK_CUR) != 0) return -1;
      blockOffset = AddOffsets(blockOffset, 4 + length);
      file->block_offsets[i + 1] = blockOffset;
    }
  }

  // A block that is already in the buffer is not read again.
  if (file->current_block < 0 || file->current_block != blockOffset) {
    const int32_t kept = file->next_block;
    file->next_block = blockOffset;
    const int status = waf_next_block(file);
    if (status == 1) {
      file->next_block = kept;
      return -1;
    }
    if (status == 2) {
      // The end of the chain: the buffer still holds the block before it, which
      // must not be read as if it lay here.
      file->buffer_len = 0;
      file->current_block = -1;
    }
  }

  file->buffer_pos = position % WAF_BLOCK_SIZE;
  file->position = position;
  return 0;
}

int waf_tell(waf_file* file) { return file == 0 ? -1 : file->position; }

int waf_size(waf_file* file) { return file == 0 ? -1 : file->entry->size; }
