#ifndef SRC_EXTERNAL_WAF_WAFEXP_H
#define SRC_EXTERNAL_WAF_WAFEXP_H
// The WAF archive reader. An archive is a read-only container of named files,
// each compressed in independent zlib blocks of 64 KiB, so that a reader can seek
// inside a file without unpacking it from the start. An archive may begin
// anywhere inside a host file.
//
// On disk, little-endian throughout, offsets from the archive's start:
//   header     'w' 'a' 'f' 0, version 0x00010000, file count (at least 1)
//   directory  per file: name length (1..260), name, size, data offset
//   data       per file, at its data offset: blocks of (compressed length,
//              zlib stream), every block but the last unpacking to 65536 bytes,
//              the chain ended by a compressed length of 0
//
// Failures are answered by a null result, -1 or a status; the reader prints
// nothing. An archive and its files belong to one thread at a time: all files
// share the archive's stream, and every block load seeks it.
#include <stdint.h>
#include <stdio.h>

enum {
  WAF_HEADER_SIZE = 12,
  WAF_VERSION = 0x00010000,
  WAF_NAME_MAX = 260,
  WAF_BLOCK_SIZE = 65536,
  WAF_COMPRESSED_MAX = 0x11000,  // 69632
};

struct waf_entry {
  char name[WAF_NAME_MAX];  // a name of 260 bytes has no terminator here
  uint32_t hash;            // waf_strhash of the name
  int32_t size;             // uncompressed size
  int32_t offset;           // first block, in the host file: data offset + archive start
};

struct waf_archive {
  FILE* stream;  // the host file, shared by all files of the archive
  int32_t count;
  waf_entry** entries;  // in file order
};

struct waf_file {
  FILE* stream;           // the archive's
  int32_t position;       // logical read position in the uncompressed file
  int32_t current_block;  // host-file offset of the block in `buffer`, -1 for none
  int32_t next_block;     // host-file offset of the block the next sequential read takes
  waf_entry* entry;       // borrowed from the archive
  unsigned char buffer[WAF_BLOCK_SIZE];
  int32_t buffer_pos;
  int32_t buffer_len;
  int32_t* block_offsets;  // host-file offset of each block as learnt; 0 is not yet known
};

waf_archive* waf_archive_open(const char* filename, int offset);
void waf_archive_close(waf_archive* arc);

waf_file* waf_open(waf_archive* arc, const char* filename);
void waf_close(waf_file* file);
// Bytes read, fewer at the end of the chain, or -1 when a block fails to load.
int waf_read(waf_file* file, void* buff, int readsize);
// whence 0 from the start, 1 from the position, 2 from the end; 0 or -1.
int waf_seek(waf_file* file, int offset, int whence);
int waf_seekabs(waf_file* file, int position);
int waf_tell(waf_file* file);
int waf_size(waf_file* file);

// The reader's own steps, open to tools that walk an archive's chains.
uint32_t waf_strhash(const char* str);
// Loads the block at next_block: 0 loaded, 1 error, 2 end of the chain.
int waf_next_block(waf_file* file);

#endif
