// PathFileExistsA: the system's test for a file or folder.
#pragma once

#if defined(_WIN32)
#  include <ZvUtiLib/platform/Windows.h>

#  include <shlwapi.h>
#else
/// 1 when `path` names anything that exists, folders included; 0 otherwise, for "" and for null.
int PathFileExistsA(const char* path);
#endif
