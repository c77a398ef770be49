// Dynamic libraries, loaded by path.
#pragma once

#include <ZvUtiLib/platform/Windows.h>

#if !defined(_WIN32)

using HMODULE = void*;
using FARPROC = void (*)();

/// Loads a library; null on failure. A name without a folder is looked for in the application folder
/// first, then where the system looks.
HMODULE LoadLibraryA(const char* path);
/// The entry point of that name, null when there is none.
FARPROC GetProcAddress(HMODULE library, const char* name);
int FreeLibrary(HMODULE library);

#endif
