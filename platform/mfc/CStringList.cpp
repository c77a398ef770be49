#include <ZvUtiLib/platform/CStringList.h>

struct StringListPosition {
  explicit StringListPosition(const char* content) : text(content) {}

  CString text;
  StringListPosition* next = nullptr;
};

CStringList::CStringList(int /*blockSize*/) {}
CStringList::~CStringList() { RemoveAll(); }

POSITION CStringList::AddTail(const char* text) {
  auto* added = new StringListPosition(text);
  (tail_ ? tail_->next : head_) = added;
  tail_ = added;
  ++count_;
  return added;
}

void CStringList::RemoveAll() {
  while (head_) {
    const StringListPosition* removed = head_;
    head_ = head_->next;
    delete removed;
  }
  tail_ = nullptr;
  count_ = 0;
}

const CString& CStringList::GetNext(POSITION& position) const {
  const CString& text = position->text;
  position = position->next;
  return text;
}
