#ifndef SRC_BASE_FILERECORDS_H
#define SRC_BASE_FILERECORDS_H
// A count read from a file is trusted only as far as the file goes: of `count`
// records of `recordSize` bytes, those that begin within the bytes left after the
// position. A damaged count then reads what is there, as if the file ended with
// it, instead of allocating what the number says.
#include "Base/File.h"

inline unsigned RecordsLeftInFile(File& file, unsigned fileSize, unsigned count, unsigned recordSize) {
  const long here = file.tell();
  const unsigned left = here >= 0 && unsigned(here) < fileSize ? fileSize - unsigned(here) : 0;
  const unsigned records = left / recordSize + (left % recordSize != 0 ? 1 : 0);
  return count < records ? count : records;
}

#endif
