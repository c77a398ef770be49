// CKxIniFileReader and CKxIniFileReaderSuite: read access to ini files.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include <ZvUtiLib/Export.h>

/// The content of one ini file, as it was when the suite last looked for it. Section and key names
/// are compared without case (a to z); values are GBK bytes as they stand, blanks and one pair of
/// quotes around them removed. Of equal sections, and of equal keys in one, only the first counts. A UTF-8
/// byte order mark is skipped and changes nothing else; UTF-16 with a mark, low byte first, becomes GBK.
class ZVUTILIB_API CKxIniFileReader {
 public:
  /// The value of `key` in `section`, or `defaultValue` (null counts as "") where either is missing
  /// or null. The text is good until the next call on this reader, or of FindIniFileReader for its file.
  const char* GetString(const char* section, const char* key, const char* defaultValue);

 private:
  friend class CKxIniFileReaderSuite;
  CKxIniFileReader() = default;

  using Keys = std::unordered_map<std::string, std::string>;

  std::unordered_map<std::string, Keys> sections_;  // all names folded to capitals
  std::string default_;                             // the last default handed out
};

/// Owns the readers that it hands out, one for each path.
class ZVUTILIB_API CKxIniFileReaderSuite {
 public:
  CKxIniFileReaderSuite();
  ~CKxIniFileReaderSuite();
  CKxIniFileReaderSuite(const CKxIniFileReaderSuite&) = delete;
  CKxIniFileReaderSuite& operator=(const CKxIniFileReaderSuite&) = delete;

  /// The reader of the file at `path`, read anew now. A file that cannot be read gives a reader that
  /// answers every question with the default. Never null; lives as long as the suite.
  CKxIniFileReader* FindIniFileReader(const char* path);

 private:
  std::unordered_map<std::string, std::unique_ptr<CKxIniFileReader>> readers_;  // by native path
};
