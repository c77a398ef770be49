// CDebug: writes the client's log file, "log/lobby.log" in the program's folder. The path is fixed; no caller
// can change it.
#pragma once

#include <type_traits>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/FormatValue.h>

/// Stateless: each line is a separate open, append and close. So the line is in the file when the call
/// returns, and the file may be moved or deleted between calls. Any thread may call; lines from different
/// threads never mix. The file grows without bound. Failures are silent: the line is lost, and nothing is
/// thrown or signalled. errno is preserved.
class ZVUTILIB_API CDebug {
 public:
  CDebug();
  CDebug(const CDebug&);
  CDebug& operator=(const CDebug&);
  virtual ~CDebug();

  /// Creates the log's folder if there is no log file yet. Call it once, before the first LogOut.
  static void LogInit();
  /// Appends "yyyy-mm-dd hh:mm:ss,mmm TEXT" and a line end, in local time. `format` (null counts as "") and
  /// its values follow the platform's vsprintf. A text of more than 1,023 bytes is cut after the last whole
  /// GBK character that fits. If the file cannot be opened, the line is lost.
  static void LogOut(const char* format, ...);
  /// The same for calls with string objects among the values, which are taken by reference. "%s" prints a
  /// CString, a std::string or a CTextString up to its first zero byte. An object of any other class does not
  /// compile.
  template <class... Values, std::enable_if_t<zvuti::kHasObjects<Values...>, int> = 0>
  static void LogOut(const char* format, const Values&... values) {
    LogOut(format, zvuti::FormatValue(values)...);
  }
};
