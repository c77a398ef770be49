// CKxIniFileReader and CKxIniFileReaderSuite: read ini files.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include <ZvUtiLib/Export.h>

/// The content of one ini file, as it was when the suite last read it. Section and key names are compared
/// regardless of ASCII case. Values are GBK bytes as they are in the file, with surrounding blanks and one
/// pair of quotes removed. If several sections have the same name, or several keys in one section, only the
/// first counts. A UTF-8 byte order mark is skipped and changes nothing else. UTF-16LE with a mark is
/// converted to GBK.
class ZVUTILIB_API CKxIniFileReader {
 public:
  /// Returns the value of `key` in `section`, or `defaultValue` (null counts as "") if either is missing or
  /// null. The text is valid until the next call on this reader, or of FindIniFileReader for its file.
  const char* GetString(const char* section, const char* key, const char* defaultValue);

 private:
  friend class CKxIniFileReaderSuite;
  CKxIniFileReader() = default;

  using Keys = std::unordered_map<std::string, std::string>;

  std::unordered_map<std::string, Keys> sections_;  // names folded to capitals
  std::string default_;                             // the last default returned
};

/// Owns the readers that it returns, one for each path.
class ZVUTILIB_API CKxIniFileReaderSuite {
 public:
  CKxIniFileReaderSuite();
  ~CKxIniFileReaderSuite();
  CKxIniFileReaderSuite(const CKxIniFileReaderSuite&) = delete;
  CKxIniFileReaderSuite& operator=(const CKxIniFileReaderSuite&) = delete;

  /// Reads the file at `path` now and returns its reader. If the file cannot be read, the reader returns the
  /// default for every key. Never null; valid as long as the suite.
  CKxIniFileReader* FindIniFileReader(const char* path);

 private:
  // By path with native separators.
  std::unordered_map<std::string, std::unique_ptr<CKxIniFileReader>> readers_;
};
