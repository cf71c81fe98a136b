// An ordered, one-based collection with optional keys: the companion class of every small class of a tune.
//
// Position and key are found in constant time (a removal leaves a hole that is closed later, so between two
// closings a position costs a binary search over the few holes). It bears additions and removals while it is
// enumerated: an enumeration meets what was added at the end, and never what was removed.
#pragma once

#include <QHash>
#include <QString>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/failure.h"

namespace zelmar {

// Where the keys of a collection lead: texts through a hash, running numbers through a plain table.
template <typename Key>
class KeyIndex;

template <>
class KeyIndex<QString> {
 public:
  static bool IsKey(const QString& key) { return !key.isEmpty(); }
  static QString Text(const QString& key) { return key; }
  qsizetype Find(const QString& key) const { return slots_.value(key, -1); }
  void Set(const QString& key, qsizetype slot) { slots_.insert(key, slot); }
  void Erase(const QString& key) { slots_.remove(key); }
  void Clear() { slots_.clear(); }
  void Reserve(qsizetype) {}

 private:
  QHash<QString, qsizetype> slots_;
};

template <>
class KeyIndex<std::int32_t> {
 public:
  static bool IsKey(std::int32_t) { return true; }
  static QString Text(std::int32_t key) { return QString::number(key); }

  qsizetype Find(std::int32_t key) const {
    if (InTable(key)) return table_[static_cast<std::size_t>(key)] - 1;
    return sparse_.value(key, -1);
  }

  void Set(std::int32_t key, qsizetype slot) {
    if (!InTable(key) && key >= 0 && static_cast<std::size_t>(key) < Limit()) Grow(key);
    if (InTable(key)) {
      std::int32_t& entry = table_[static_cast<std::size_t>(key)];
      used_ += entry == 0;
      entry = static_cast<std::int32_t>(slot) + 1;
    } else {
      sparse_.insert(key, slot);
    }
  }

  void Erase(std::int32_t key) {
    if (InTable(key)) {
      std::int32_t& entry = table_[static_cast<std::size_t>(key)];
      used_ -= entry != 0;
      entry = 0;
    } else {
      sparse_.remove(key);
    }
  }

  void Clear() {
    table_.clear();
    sparse_.clear();
    used_ = 0;
  }

  void Reserve(qsizetype count) {
    expected_ = static_cast<std::size_t>(count);
    table_.reserve(expected_ + 2);
  }

 private:
  // Keys below this go into the table: it stays within a few times what it holds.
  std::size_t Limit() const { return 1024 + 2 * std::max(used_, expected_); }

  bool InTable(std::int32_t key) const { return key >= 0 && static_cast<std::size_t>(key) < table_.size(); }

  // Running numbers fill the table densely; a key far beyond them stays in the hash. The table grows in large
  // steps, since each step looks through the hash.
  void Grow(std::int32_t key) {
    const auto key_end = static_cast<std::size_t>(key) + 1;
    const auto wanted = std::max(key_end, std::min(Limit(), table_.size() + table_.size() / 2));
    if (wanted > table_.capacity()) table_.reserve(wanted);
    const auto before = table_.size();
    table_.resize(wanted, 0);
    if (sparse_.isEmpty()) return;
    for (auto it = sparse_.begin(); it != sparse_.end();) {
      const auto sparse_key = static_cast<std::size_t>(it.key());
      if (it.key() >= 0 && sparse_key >= before && sparse_key < wanted) {
        table_[sparse_key] = static_cast<std::int32_t>(it.value()) + 1;
        ++used_;
        it = sparse_.erase(it);
      } else {
        ++it;
      }
    }
  }

  std::vector<std::int32_t> table_;  // slot + 1 by key, 0 where the key is free
  QHash<std::int32_t, qsizetype> sparse_;
  std::size_t used_ = 0;
  std::size_t expected_ = 0;
};

template <typename T, typename Key = QString>
class OrderedCollection {
 public:
  using Pointer = std::shared_ptr<T>;

  OrderedCollection() = default;
  OrderedCollection(const OrderedCollection&) = delete;
  OrderedCollection& operator=(const OrderedCollection&) = delete;

  qsizetype Count() const { return static_cast<qsizetype>(slots_.size() - holes_.size()); }

  // Another number whenever an item has come or gone since it was read: what was worked out from the items
  // that the collection holds, and from their order, is good for as long as it stays.
  std::uint64_t Revision() const { return revision_; }

  // The item at `position`, counted from 1. Throws SubscriptError outside 1 to Count.
  const Pointer& Item(qsizetype position) const { return slots_[SlotOf(position)]; }

  // Takes the item at `position` out. Throws SubscriptError outside 1 to Count.
  void Remove(qsizetype position) { RemoveSlot(SlotOf(position)); }

  void Clear() {
    // Under an enumeration the slots stay, as holes, so that its place stays good.
    RemoveWhere([](const T&) { return true; });
  }

  // Takes every item out for which `condition` holds, in one pass.
  template <typename Condition>
  void RemoveWhere(Condition condition) {
    if (enumerations_ > 0) {
      holes_.clear();
      for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
        if (slots_[slot] && condition(std::as_const(*slots_[slot]))) Empty(slot);
        if (!slots_[slot]) holes_.push_back(slot);
      }
      return;
    }
    std::size_t kept = 0;
    for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
      if (!slots_[slot]) continue;
      if (condition(std::as_const(*slots_[slot])))
        Empty(slot);
      else
        MoveSlot(slot, kept++);
    }
    slots_.resize(kept);
    keys_.resize(kept);
    holes_.clear();
  }

  void Reserve(qsizetype count) {
    slots_.reserve(static_cast<std::size_t>(count));
    keys_.reserve(static_cast<std::size_t>(count));
    index_.Reserve(count);
  }

  // Calls `visit` with each item in order: an enumeration that takes no hold of the items, for long passes.
  // The item must not be used any more once `visit` has changed the collection.
  template <typename Function>
  void ForEach(Function visit) const {
    const Enumeration enumeration(enumerations_);
    for (std::size_t slot = 0; slot < slots_.size(); ++slot)
      if (slots_[slot]) visit(*slots_[slot]);
  }

  // A place in an enumeration. Holds its item, so that the item may be removed while it is looked at.
  class Iterator {
   public:
    using value_type = Pointer;
    using difference_type = std::ptrdiff_t;

    explicit Iterator(const OrderedCollection* collection) : collection_(collection) {
      ++collection_->enumerations_;
      Settle();
    }
    Iterator(const Iterator& other) : collection_(other.collection_), slot_(other.slot_), item_(other.item_) {
      ++collection_->enumerations_;
    }
    Iterator& operator=(const Iterator&) = delete;
    ~Iterator() { --collection_->enumerations_; }

    const Pointer& operator*() const { return item_; }
    T* operator->() const { return item_.get(); }
    Iterator& operator++() {
      ++slot_;
      Settle();
      return *this;
    }
    bool operator==(std::default_sentinel_t) const { return item_ == nullptr; }

   private:
    void Settle() {
      while (slot_ < collection_->slots_.size() && !collection_->slots_[slot_]) ++slot_;
      item_ = slot_ < collection_->slots_.size() ? collection_->slots_[slot_] : nullptr;
    }

    const OrderedCollection* collection_;
    std::size_t slot_ = 0;
    Pointer item_;
  };

  Iterator begin() const { return Iterator(this); }
  std::default_sentinel_t end() const { return {}; }

 protected:
  // Puts the item at the end under `key`. Throws DuplicateKeyError, leaving the collection as it was, when
  // the key is taken.
  const Pointer& Append(Pointer item, const Key& key) {
    if (index_.IsKey(key)) {
      if (index_.Find(key) >= 0) throw DuplicateKeyError(index_.Text(key));
      index_.Set(key, static_cast<qsizetype>(slots_.size()));
    }
    keys_.push_back(key);
    slots_.push_back(std::move(item));
    ++revision_;
    return slots_.back();
  }

  bool HoldsKey(const Key& key) const { return index_.IsKey(key) && index_.Find(key) >= 0; }

  // The key that the item at `position` was added under.
  const Key& KeyOf(qsizetype position) const { return keys_[SlotOf(position)]; }
  const Pointer& ItemOfKey(const Key& key) const { return slots_[SlotOfKey(key)]; }
  void RemoveKey(const Key& key) { RemoveSlot(SlotOfKey(key)); }

 private:
  // Keeps slots in place while it lives.
  class Enumeration {
   public:
    explicit Enumeration(int& count) : count_(count) { ++count_; }
    ~Enumeration() { --count_; }
    Enumeration(const Enumeration&) = delete;
    Enumeration& operator=(const Enumeration&) = delete;

   private:
    int& count_;
  };

  std::size_t SlotOf(qsizetype position) const {
    if (position < 1 || position > Count()) throw SubscriptError();
    const auto wanted = static_cast<std::size_t>(position - 1);
    // Hole number k lies before the wanted item while its place less the k holes before it is not beyond it.
    std::size_t low = 0, high = holes_.size();
    while (low < high) {
      const std::size_t middle = (low + high) / 2;
      if (holes_[middle] - middle <= wanted)
        low = middle + 1;
      else
        high = middle;
    }
    return wanted + low;
  }

  std::size_t SlotOfKey(const Key& key) const {
    const qsizetype slot = index_.IsKey(key) ? index_.Find(key) : -1;
    if (slot < 0)
      throw SubscriptError(
          QStringLiteral("No element of this collection has the key %1").arg(index_.Text(key)));
    return static_cast<std::size_t>(slot);
  }

  void Empty(std::size_t slot) {
    if (index_.IsKey(keys_[slot])) index_.Erase(keys_[slot]);
    slots_[slot].reset();
    ++revision_;
  }

  void MoveSlot(std::size_t from, std::size_t to) {
    if (from == to) return;
    slots_[to] = std::move(slots_[from]);
    keys_[to] = std::move(keys_[from]);
    if (index_.IsKey(keys_[to])) index_.Set(keys_[to], static_cast<qsizetype>(to));
  }

  void RemoveSlot(std::size_t slot) {
    Empty(slot);
    if (slot + 1 == slots_.size() && enumerations_ == 0) {
      slots_.pop_back();
      keys_.pop_back();
      while (!holes_.empty() && holes_.back() + 1 == slots_.size()) {
        holes_.pop_back();
        slots_.pop_back();
        keys_.pop_back();
      }
      return;
    }
    holes_.insert(std::lower_bound(holes_.begin(), holes_.end(), slot), slot);
    const auto tolerated = 64 + 4 * static_cast<std::size_t>(std::sqrt(static_cast<double>(slots_.size())));
    if (enumerations_ == 0 && holes_.size() > tolerated) CloseHoles();
  }

  void CloseHoles() {
    std::size_t kept = holes_.front();
    for (std::size_t slot = kept; slot < slots_.size(); ++slot)
      if (slots_[slot]) MoveSlot(slot, kept++);
    slots_.resize(kept);
    keys_.resize(kept);
    holes_.clear();
  }

  std::vector<Pointer> slots_;
  std::vector<Key> keys_;
  std::vector<std::size_t> holes_;  // emptied slots, ascending
  KeyIndex<Key> index_;
  std::uint64_t revision_ = 0;
  mutable int enumerations_ = 0;
};

// A collection whose optional keys are texts; Add of the companion classes creates the item.
template <typename T>
class TextKeyedCollection : public OrderedCollection<T, QString> {
  using Base = OrderedCollection<T, QString>;

 public:
  using Base::Item;
  using Base::Remove;
  // By key. Throws SubscriptError when no item has it.
  const typename Base::Pointer& Item(const QString& key) const { return Base::ItemOfKey(key); }
  void Remove(const QString& key) { Base::RemoveKey(key); }
  bool Holds(const QString& key) const { return Base::HoldsKey(key); }
};

}  // namespace zelmar
