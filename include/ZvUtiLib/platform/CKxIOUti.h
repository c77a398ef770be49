// CKxIOUti: finds the program's folder, and provides small helpers for paths.
#pragma once

#include <ZvUtiLib/platform/CString.h>

/// Paths are GBK bytes with separators of either kind. On Linux GetAppPath returns the folder in the system's
/// own encoding, and no path is converted. A null path counts as "". Stateless: any thread may call.
class ZVUTILIB_API CKxIOUti {
 public:
  CKxIOUti() = default;
  CKxIOUti(const CKxIOUti&) = default;
  CKxIOUti& operator=(const CKxIOUti&) = default;
  virtual ~CKxIOUti();

  /// Returns the folder of the running program, ending in a separator.
  static CString GetAppPath();
  /// Returns nonzero if a file or folder with this path exists.
  static int IsFileExist(const char* path);
  /// Returns the folder part of a file's path, without its last separator of either kind. Returns "" for a
  /// path without a separator. A root ("/", "C:\") keeps its separator.
  static CString GetFilePath(const char* path);
  /// Creates the folder, one level only; returns nonzero if it exists afterwards.
  static int CreateDir(const char* path);
};
