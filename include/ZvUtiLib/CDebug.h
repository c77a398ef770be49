// CDebug: the client's one log file, "log/lobby.log" below the program's folder.
#pragma once

#include <type_traits>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/FormatValue.h>

/// Without state: each line is an open, an append and a close of its own, so a line is in the file when
/// the call returns, and the file may be moved or deleted between calls. Any thread may call; lines of
/// several threads never mix. The file grows without bound. Failures are silent: the line is lost, and
/// nothing is thrown or signalled. errno stays as it is.
class ZVUTILIB_API CDebug {
 public:
  CDebug();
  CDebug(const CDebug&);
  CDebug& operator=(const CDebug&);
  virtual ~CDebug();

  /// Makes the log's folder where there is no log file yet. To be called once, before the first LogOut.
  static void LogInit();
  /// Appends "yyyy-mm-dd hh:mm:ss,mmm TEXT" and a line end, in local time. `format` (null counts as "")
  /// and its values follow the platform's vsprintf; a text of more than 1,023 bytes is cut behind its
  /// last whole GBK character within them. A file that cannot be opened loses the line.
  static void LogOut(const char* format, ...);
  /// The same with texts among the values, which are taken by reference: "%s" prints a CString, a std::string
  /// or a CTextString as far as its first zero byte. An object of any other class does not compile.
  template <class... Values, std::enable_if_t<zvuti::kHasObjects<Values...>, int> = 0>
  static void LogOut(const char* format, const Values&... values) {
    LogOut(format, zvuti::FormatValue(values)...);
  }
};
