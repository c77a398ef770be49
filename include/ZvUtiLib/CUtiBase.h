// CUtiBase: checks of user input, and small desktop helpers.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CString.h>

/// Name characters are ASCII letters, digits and the underscore. Lengths count bytes. Stateless: any thread
/// may call. Checks return 1 for yes and 0 for no.
class ZVUTILIB_API CUtiBase {
 public:
  CUtiBase();
  CUtiBase(const CUtiBase&);
  CUtiBase& operator=(const CUtiBase&);
  virtual ~CUtiBase();

  /// Whether an account name consists of 4 to 16 name characters. 0 for null.
  static int CheckAccountValid(const char* text);
  /// Whether a password consists of 6 to 20 name characters. 0 for null.
  static int CheckPasswdValid(const char* text);
  /// Whether the text consists of digits 0 to 9 only; 1 for an empty text.
  static int IsDigit(const CString& text);
  /// Whether the byte is a digit 0 to 9.
  static int IsDigit(char character);
  /// Whether a chat text contains no word of the class's own list. Nothing loads that list, so the result is
  /// always 1. To check against a loaded list, query a CUtiBlackList directly.
  static int IsChatValid(const char* text);

  /// Replaces the clipboard's content with the text, byte for byte. The old content stays if the text is null
  /// or empty, if someone else has the clipboard open, or if memory for the copy can't be allocated. On Linux
  /// the clipboard is private to the process. <ZvUtiLib/platform/Clipboard.h> reads it.
  static void CopyToClipboard(const char* text);
  /// Loads a dynamic library, calls its entry point "DllRegisterServer" and unloads the library. Does nothing
  /// if the library can't be loaded or has no such entry point.
  static void AutoRegsvr32(const char* path);
};
