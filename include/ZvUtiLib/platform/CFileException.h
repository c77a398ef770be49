// CFileException: thrown if the size of an open file cannot be determined or the file cannot be read.
#pragma once

#include <stdexcept>

#include <ZvUtiLib/Export.h>

/// Thrown by operations that read files, where their comments say so. A file that cannot be opened does not
/// raise an exception; the operation reports it by its result.
class ZVUTILIB_API CFileException : public std::runtime_error {
 public:
  /// `what` names the operation that failed.
  explicit CFileException(const char* what);
  ~CFileException() override;
};
