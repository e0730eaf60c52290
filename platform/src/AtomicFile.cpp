#include "AtomicFile.h"

#include "FaultInjection.h"
#include "solva/FaultInjection.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <map>
#include <mutex>
#include <string>

namespace {

struct Pending {
  std::string temp;
  std::string target;
};

std::mutex gPendingLock;
std::map<FILE*, Pending>& PendingStreams() {
  static std::map<FILE*, Pending> streams;
  return streams;
}

std::string FolderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  if (slash == 0) return "/";
  return path.substr(0, slash);
}

bool CopyInto(int from, int to) {
  char buffer[1 << 16];
  for (;;) {
    const ssize_t got = read(from, buffer, sizeof buffer);
    if (got == 0) return true;
    if (got < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    for (ssize_t done = 0; done < got;) {
      const ssize_t put = write(to, buffer + done, size_t(got - done));
      if (put < 0) {
        if (errno == EINTR) continue;
        return false;
      }
      done += put;
    }
  }
}

void SyncFolder(const std::string& folder) {
  if (!solva::SyncWrites()) return;
  const int fd = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
  if (fd < 0) return;
  fsync(fd);
  close(fd);
}

FILE* OpenAtomic(const char* path, const char* mode) {
  if (path == nullptr || mode == nullptr || (mode[0] != 'w' && mode[0] != 'a')) {
    errno = EINVAL;
    return nullptr;
  }
  std::string temp = std::string(path) + ".tmp-XXXXXX";
  const int fd = mkstemp(&temp[0]);
  if (fd < 0) return nullptr;

  // mkstemp makes the file private; gallery files are shared with other programs.
  const mode_t mask = umask(0);
  umask(mask);
  fchmod(fd, 0666 & ~mask);

  if (mode[0] == 'a') {
    const int old = open(path, O_RDONLY);
    if (old >= 0) {
      const bool copied = CopyInto(old, fd);
      close(old);
      if (!copied) {
        const int saved = errno;
        close(fd);
        unlink(temp.c_str());
        errno = saved;
        return nullptr;
      }
    }
  }

  FILE* stream = fdopen(fd, mode);
  if (stream == nullptr) {
    const int saved = errno;
    close(fd);
    unlink(temp.c_str());
    errno = saved;
    return nullptr;
  }
  std::lock_guard<std::mutex> lock(gPendingLock);
  PendingStreams()[stream] = Pending{temp, path};
  return stream;
}

int CloseAtomic(FILE* stream, bool* counted) {
  if (stream == nullptr) return EOF;
  Pending pending;
  {
    std::lock_guard<std::mutex> lock(gPendingLock);
    auto found = PendingStreams().find(stream);
    if (found == PendingStreams().end()) {
      // Not a replacement: a plain close, which is no operation of the disk's own.
      *counted = false;
      return fclose(stream);
    }
    pending = std::move(found->second);
    PendingStreams().erase(found);
  }

  bool ok = fflush(stream) == 0;
  if (solva::SyncWrites()) ok = fsync(fileno(stream)) == 0 && ok;
  ok = fclose(stream) == 0 && ok;
  if (!ok) {
    unlink(pending.temp.c_str());
    return EOF;
  }
  if (rename(pending.temp.c_str(), pending.target.c_str()) != 0) {
    const int saved = errno;
    unlink(pending.temp.c_str());
    errno = saved;
    return EOF;
  }
  SyncFolder(FolderOf(pending.target));
  return 0;
}

}  // namespace

// Each open and each finish is one file operation of the device, whether it
// worked or not: the power can go between any two.
FILE* fopenAtomic(const char* path, const char* mode) {
  FILE* stream = OpenAtomic(path, mode);
  const int saved = errno;
  solva::detail::FileOperationDone();
  errno = saved;
  return stream;
}

int fcloseAtomic(FILE* stream) {
  bool counted = stream != nullptr;
  const int result = CloseAtomic(stream, &counted);
  const int saved = errno;
  if (counted) solva::detail::FileOperationDone();
  errno = saved;
  return result;
}
