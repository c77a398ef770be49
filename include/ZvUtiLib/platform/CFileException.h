// CFileException: what is raised when a file that is open cannot be measured or read.
#pragma once

#include <stdexcept>

#include <ZvUtiLib/Export.h>

/// Comes out of the operations that read files, where their comments say so. A file that does not open
/// is no exception, but a plain result.
class ZVUTILIB_API CFileException : public std::runtime_error {
 public:
  /// `what` says which operation failed.
  explicit CFileException(const char* what);
  ~CFileException() override;
};
