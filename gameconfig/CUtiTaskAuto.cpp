#include <ZvUtiLib/CUtiIO.h>
#include <ZvUtiLib/CUtiTaskAuto.h>

CUtiTaskAuto::~CUtiTaskAuto() = default;
CUtiTaskAuto::CUtiTaskAuto() = default;

void CUtiTaskAuto::Load(unsigned long gameId) {
  text_ = CUtiIO::GetGamePath(gameId, "Task.ini");
  reader_ = suite_.FindIniFileReader(text_);
}

CString& CUtiTaskAuto::GetName(int task) {
  text_.Format("%d", task);
  text_ = reader_ ? reader_->GetString("AutoTask", text_, "") : "";
  return text_;
}
