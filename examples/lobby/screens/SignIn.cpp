#include "Files.h"
#include "Screens.h"

void ShowSignIn(Report& report) {
  report.Section("Sign-in");
  int accounts = 0;
  int passwords = 0;
  const auto candidates = ReadTable("accounts.txt", 2);
  for (const Fields& row : candidates) {
    const bool account = CUtiBase::CheckAccountValid(row[0].c_str()) != 0;
    const bool password = CUtiBase::CheckPasswdValid(row[1].c_str()) != 0;
    accounts += account;
    passwords += password;
    report.Line("%s %s %s %s", Padded(row[0], 22).c_str(), account ? "valid name  " : "invalid name",
                Padded(row[1], 24).c_str(), password ? "valid password" : "invalid password");
    report.Did(2);
  }
  CDebug::LogOut("sign-in: %d valid names and %d valid passwords of %d", accounts, passwords,
                 static_cast<int>(candidates.size()));
}
