// CKxIOUti: where the program stands, and small questions about paths.
#pragma once

#include <ZvUtiLib/platform/CString.h>

/// Paths are GBK bytes with separators of either kind. A null path counts as "".
/// Stateless: any thread may call.
class ZVUTILIB_API CKxIOUti {
 public:
  CKxIOUti() = default;
  CKxIOUti(const CKxIOUti&) = default;
  CKxIOUti& operator=(const CKxIOUti&) = default;
  virtual ~CKxIOUti();

  /// The folder of the running program, ending in a separator.
  static CString GetAppPath();
  /// Nonzero when a file (or folder) of this path exists.
  static int IsFileExist(const char* path);
  /// The folder part of a file's path, without its last separator; both kinds count. "" for a path
  /// without one; a root ("/", "C:\") keeps its separator.
  static CString GetFilePath(const char* path);
  /// Makes the folder, one level; nonzero when it exists afterwards.
  static int CreateDir(const char* path);
};
