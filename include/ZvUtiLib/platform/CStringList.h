// CStringList: an ordered list of CString, iterated by position from its head.
#pragma once

#include <ZvUtiLib/platform/CString.h>

struct StringListPosition;
/// A position in a list; null after the end. Valid until its element is removed.
using POSITION = const StringListPosition*;

/// Elements keep the order in which they were added. Use a list from one thread at a time; several threads
/// may iterate over a list while none changes it.
class ZVUTILIB_API CStringList {
 public:
  /// Creates an empty list. The block size has no effect; it is there because users of this class are used to
  /// passing it.
  explicit CStringList(int blockSize = 10);
  ~CStringList();
  CStringList(const CStringList&) = delete;
  CStringList& operator=(const CStringList&) = delete;

  /// Return the number of elements, and whether there are none.
  int GetCount() const { return count_; }
  bool IsEmpty() const { return count_ == 0; }
  /// Adds a copy of `text` (null counts as "") after the last element and returns its position.
  POSITION AddTail(const char* text);
  /// Removes all elements.
  void RemoveAll();
  /// Returns the position of the first element, null for an empty list.
  POSITION GetHeadPosition() const { return head_; }
  /// Returns the element at `position` and advances `position` to the next one. REQUIRES: a position in this
  /// list.
  const CString& GetNext(POSITION& position) const;

 private:
  StringListPosition* head_ = nullptr;
  StringListPosition* tail_ = nullptr;
  int count_ = 0;
};
