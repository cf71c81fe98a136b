#include "model/tones.h"

namespace zelmar {

namespace {

// The number that `key` spells in plain decimal form. Throws SubscriptError for any other text, as no tone
// has it.
std::int32_t AbsRefOfKey(const QString& key) {
  bool ok = false;
  const std::int32_t number = key.toInt(&ok);
  if (!ok || QString::number(number) != key)
    throw SubscriptError(QStringLiteral("No element of this collection has the key %1").arg(key));
  return number;
}

}  // namespace

const std::shared_ptr<Tone>& Tones::Add(std::shared_ptr<Tone> tone) {
  const std::int32_t key = tone->AbsRef();
  return Append(std::move(tone), key);
}

const std::shared_ptr<Tone>& Tones::Item(const QString& key) const {
  return ItemOfKey(AbsRefOfKey(key));
}

void Tones::Remove(const QString& key) {
  RemoveKey(AbsRefOfKey(key));
}

const Tone* Tones::Find(std::int32_t abs_ref) const {
  return HoldsKey(abs_ref) ? ItemOfKey(abs_ref).get() : nullptr;
}

}  // namespace zelmar
