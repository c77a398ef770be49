// CFile and CStdioFile: stand-ins for the platform's file classes, with the operations that the services use.
#pragma once

#include <cstdint>
#include <cstdio>

#include <ZvUtiLib/platform/CFileException.h>
#include <ZvUtiLib/platform/CString.h>

/// A file opened for reading. The destructor closes it. The share flags matter on Windows only. Only one
/// thread at a time may use an object.
class CFile {
 public:
  enum OpenFlags : unsigned {
    modeRead = 0x0000,
    shareDenyNone = 0x0040,
    typeText = 0x4000,
  };

  CFile() = default;
  virtual ~CFile();
  CFile(const CFile&) = delete;
  CFile& operator=(const CFile&) = delete;

  /// Closes the current file, if any, and opens `path` for reading. Returns 1, or 0 if `path` is missing, is
  /// not a regular file, or cannot be opened.
  int Open(const char* path, unsigned flags);
  /// Length in bytes. Throws CFileException if no file is open or the system cannot determine the length.
  std::uint64_t GetLength() const;
  /// Reads up to `count` bytes and returns the number of bytes read. Throws CFileException on a read error or
  /// if no file is open.
  unsigned Read(void* out, unsigned count);
  void Close();

 protected:
  std::FILE* file_ = nullptr;
  bool isText_ = false;
};

/// A text file read line by line.
class CStdioFile : public CFile {
 public:
  /// Reads the next line into `line`, without its line end (CR LF or LF). Returns 1, or 0 with an empty
  /// `line` at the end of the file. The last line needs no line end; a CR without LF is part of its line.
  /// `line` is cut at the first zero byte. A file opened with typeText ends at its first byte 0x1A. Throws
  /// CFileException on a read error or if no file is open, and leaves `line` unchanged.
  int ReadString(CString& line);
};
