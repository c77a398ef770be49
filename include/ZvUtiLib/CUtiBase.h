// CUtiBase: checks on what a user types, and small helpers around the desktop.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CString.h>

/// Name characters are the ASCII letters and digits and the underscore; lengths count bytes.
/// Stateless: any thread may call. Results are 1 for yes and 0 for no.
class ZVUTILIB_API CUtiBase {
 public:
  CUtiBase();
  CUtiBase(const CUtiBase&);
  CUtiBase& operator=(const CUtiBase&);
  virtual ~CUtiBase();

  /// Whether an account name has 4 to 16 bytes, all of them name characters. A null text has not.
  static int CheckAccountValid(const char* text);
  /// Whether a password has 6 to 20 bytes, all of them name characters. A null text has not.
  static int CheckPasswdValid(const char* text);
  /// Whether no byte of the text is anything but a digit 0 to 9; so yes for an empty text.
  static int IsDigit(const CString& text);
  /// Whether the byte is a digit 0 to 9.
  static int IsDigit(char character);
  /// Whether a chat text has none of the words of a list of its own, which nothing loads: so yes for
  /// every text. A CUtiBlackList that a client loads is the client's to ask.
  static int IsChatValid(const char* text);

  /// Puts a text on the clipboard, byte for byte, in place of what was there. A null or empty text, a
  /// clipboard that others hold open and a lack of memory leave the old content. On Linux the clipboard
  /// is one of the process's own. <ZvUtiLib/platform/Clipboard.h> reads it.
  static void CopyToClipboard(const char* text);
  /// Loads a dynamic library, calls its entry point "DllRegisterServer" and releases the library. Does
  /// nothing when the library can't be loaded or has no such entry point.
  static void AutoRegsvr32(const char* path);
};
