// CFile and CStdioFile: files read by the service classes. Files close when their object ends.
#pragma once

#include <cstdint>
#include <cstdio>

#include <ZvUtiLib/platform/CFileException.h>
#include <ZvUtiLib/platform/CString.h>

/// A file opened for reading. The share flags have a meaning on Windows only. One object serves one
/// thread at a time.
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

  /// Opens `path` for reading; returns 1, or 0 when it is missing, a folder, or cannot be opened.
  /// What was open before is closed in either case.
  int Open(const char* path, unsigned flags);
  /// Length in bytes. Throws CFileException when the system does not tell it, or no file is open.
  std::uint64_t GetLength() const;
  /// Reads up to `count` bytes and returns how many there were. Throws CFileException on a read error
  /// and when no file is open.
  unsigned Read(void* out, unsigned count);
  void Close();

 protected:
  std::FILE* file_ = nullptr;
  bool isText_ = false;
};

/// A text file read line by line.
class CStdioFile : public CFile {
 public:
  /// Reads the next line without its end (CR LF or LF) into `line`; returns 1, or 0 with an empty
  /// `line` at the end of the file. The last line needs no end, a lone CR is part of its line, and a
  /// zero byte ends the line's text early. A file opened with typeText ends before its first byte
  /// 0x1A. Throws CFileException on a read error and when no file is open; `line` stays then.
  int ReadString(CString& line);
};
