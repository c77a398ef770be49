// Walker: the walk over a record's rows that passes each row to a RowVisitor.
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "data/wire/RecordType.h"

namespace zvuti::wire {

class Walker {
 public:
  static constexpr bool kReads = true;

  explicit Walker(RowVisitor& rows) : rows_(rows) {}

  template <class T>
  void bits8(const char* name, T& field) {
    rows_.Number(name, NumberRef::Of(field));
  }
  template <class T>
  void bits16(const char* name, T& field) {
    rows_.Number(name, NumberRef::Of(field));
  }
  template <class T>
  void bits32(const char* name, T& field) {
    rows_.Number(name, NumberRef::Of(field));
  }
  template <class T>
  void bits64(const char* name, T& field) {
    rows_.Number(name, NumberRef::Of(field));
  }
  void packedTime(const char* name, std::uint32_t& field) {
    NumberRef number = NumberRef::Of(field);
    number.isPackedTime = true;
    rows_.Number(name, number);
  }
  template <class T>
  void code(const char* name, T& field) {
    rows_.Code(name, NumberRef::Of(field));
  }
  template <class E>
  void tag(const char* name, E& field) {
    rows_.Tag(name, NumberRef::Of(field), kTags<E>);
  }
  void text(const char* name, std::string& field) { rows_.Text(name, field); }

  template <class T>
  void list(const char* name, std::vector<T>& items) {
    class Ref : public ListRef {
     public:
      explicit Ref(std::vector<T>& items_) : ListRef(Elements()), list(items_) {}
      std::size_t Size() const override { return list.size(); }
      void Resize(std::size_t size) override { list.resize(size); }
      void* At(std::size_t index) override { return &list[index]; }

     private:
      static const RecordType* Elements() {
        if constexpr (std::is_same_v<T, std::string>) {
          return nullptr;
        } else {
          return &Codec<T>::kType;
        }
      }
      std::vector<T>& list;
    } ref(items);
    rows_.List(name, ref);
  }

  template <class Map>
  void map(const char* name, Map& entries) {
    MapOf<Map, std::nullptr_t> ref(entries, nullptr, nullptr);
    rows_.Map(name, ref);
  }
  template <class Map, class KeyOf>
  void blockMap(const char* name, Map& entries, KeyOf keyOf) {
    MapOf<Map, KeyOf> ref(entries, keyOf, &Codec<typename Map::mapped_type>::kType);
    rows_.Map(name, ref);
  }

  template <class T>
  void block64(const char* name, T& block) {
    rows_.Record(name, Codec<T>::kType, &block, Embedding::kBlock);
  }
  /// A gap in a block.
  template <class T>
  void reserved(const char* name, T& bytes) {
    rows_.Reserved(name, &bytes, sizeof bytes);
  }

  template <class R>
  void record(const char* name, R& nested) {
    rows_.Record(name, Codec<R>::kType, &nested, Embedding::kNested);
  }
  template <class R>
  void base(R& part) {
    rows_.Record(Codec<R>::kType.name, Codec<R>::kType, &part, Embedding::kBase);
  }
  template <class R>
  void virtualPart(const char* name, R& part) {
    rows_.Record(name, Codec<R>::kType, &part, Embedding::kVirtual);
  }

  /// Not on the wire, so there is nothing to list, show or fill.
  template <class T>
  void local(const char*, T&) {}

  template <class R>
  bool onlyIf(const Condition& condition, const R& record, bool (R::*holds)() const) {
    return rows_.OnlyIf(condition, (record.*holds)());
  }

 private:
  template <class M, class KeyMember>
  class MapOf : public MapRef {
   public:
    using Key = typename M::key_type;

    MapOf(M& entries, KeyMember keyOf, const RecordType* blocks_)
        : MapRef(blocks_, std::is_signed_v<Key>, std::is_signed_v<typename M::mapped_type>),
          map_(entries),
          keyOf_(keyOf) {}
    std::size_t Size() const override { return map_.size(); }
    void ForEach(const std::function<void(std::int64_t, void*)>& visit) override {
      for (auto& [key, value] : map_) visit(key, &value);
    }
    void* Entry(std::int64_t key) override {
      auto& value = map_[static_cast<Key>(key)];
      if constexpr (kHasBlocks) value.*keyOf_ = static_cast<Key>(key);
      return &value;
    }
    std::int64_t KeyOf([[maybe_unused]] const void* block) const override {
      if constexpr (kHasBlocks) {
        return static_cast<const typename M::mapped_type*>(block)->*keyOf_;
      } else {
        return 0;
      }
    }

   private:
    static constexpr bool kHasBlocks = !std::is_same_v<KeyMember, std::nullptr_t>;
    M& map_;
    KeyMember keyOf_;
  };

  RowVisitor& rows_;
};

}  // namespace zvuti::wire
