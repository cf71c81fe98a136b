// The events of a tune in order, each keyed by its AbsRef.
#pragma once

#include "model/collection.h"
#include "model/tone.h"

namespace zelmar {

class Tones : public OrderedCollection<Tone, std::int32_t> {
  using Base = OrderedCollection<Tone, std::int32_t>;

 public:
  using Base::Item;
  using Base::Remove;

  // Adds an existing tone at the end under its AbsRef. Throws DuplicateKeyError when that is in use.
  const std::shared_ptr<Tone>& Add(std::shared_ptr<Tone> tone);

  // By key, the AbsRef as decimal text. Throws SubscriptError when no tone has it.
  const std::shared_ptr<Tone>& Item(const QString& key) const;
  void Remove(const QString& key);
  // The tone that was added under that AbsRef, null when there is none.
  const Tone* Find(std::int32_t abs_ref) const;
};

}  // namespace zelmar
