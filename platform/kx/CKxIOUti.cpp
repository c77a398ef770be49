#include <ZvUtiLib/platform/CKxIOUti.h>

#include <string_view>

#include "platform/Doors.h"
#include "platform/Path.h"
#include "platform/win32/PathFileExists.h"

CKxIOUti::~CKxIOUti() = default;

CString CKxIOUti::GetAppPath() { return CString(std::string_view(zvuti::TheDoors().applicationFolder())); }

int CKxIOUti::IsFileExist(const char* path) { return PathFileExistsA(path); }

CString CKxIOUti::GetFilePath(const char* path) {
  std::string_view folder = zvuti::FolderOf(path ? path : "");
  const bool isRoot = folder.size() == 1 || (folder.size() == 3 && folder[1] == ':');
  if (!folder.empty() && !isRoot) folder.remove_suffix(1);
  return CString(folder);
}

int CKxIOUti::CreateDir(const char* path) { return zvuti::MakeFolder(path) ? 1 : 0; }
