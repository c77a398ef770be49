// CStringList: an ordered list of CString, walked by position from its head.
#pragma once

#include <ZvUtiLib/platform/CString.h>

struct StringListPosition;
/// A place in a list; null behind the end. Good until its element is removed.
using POSITION = const StringListPosition*;

/// Elements stand in the order in which they were added. A list serves one thread at a time; several
/// may walk one that nobody changes.
class ZVUTILIB_API CStringList {
 public:
  /// Empty. The block size is what users of this class are used to give; it has no effect.
  explicit CStringList(int blockSize = 10);
  ~CStringList();
  CStringList(const CStringList&) = delete;
  CStringList& operator=(const CStringList&) = delete;

  /// How many elements there are, and whether there are none.
  int GetCount() const { return count_; }
  bool IsEmpty() const { return count_ == 0; }
  /// Adds a copy of `text` (null counts as "") behind the last element and returns its place.
  POSITION AddTail(const char* text);
  /// Removes all elements.
  void RemoveAll();
  /// The place of the first element, null in an empty list.
  POSITION GetHeadPosition() const { return head_; }
  /// The element at `position`, which moves on to the next place. REQUIRES: a place of this list.
  const CString& GetNext(POSITION& position) const;

 private:
  StringListPosition* head_ = nullptr;
  StringListPosition* tail_ = nullptr;
  int count_ = 0;
};
