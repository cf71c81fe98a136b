// A tune as bytes, every field in its own width, for keeping one aside outside the database.
//
// Two halves: the head (catalogue, tracks, words and themes), which is small, and the events. What playing
// leaves in a tune (its place, the metronome, the tempo and expression maps, the rests) is no part of it.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QStringList>
#include <limits>
#include <memory>

namespace zelmar {

class Tone;
class Tones;
class Tune;

QByteArray PackTuneHead(Tune& tune);

// Packs a tune in slices, so that events can be served between them however long the tune is.
class TunePacker {
 public:
  static constexpr qsizetype kAllEvents = std::numeric_limits<qsizetype>::max();

  explicit TunePacker(std::shared_ptr<Tune> tune);

  // Packs the next so many events. True once all is packed, as the tune is at that moment: one that was
  // changed between two slices is begun anew, and in the end packed in one go. Throws OverflowError when an
  // event has a pitch that no number stands for.
  bool Advance(qsizetype events);

  const std::shared_ptr<Tune>& PackedTune() const { return tune_; }
  // Changes of the tune as it was packed.
  std::uint64_t Changes() const { return changes_; }
  const QByteArray& Head() const { return head_; }
  const QByteArray& Events() const { return events_; }

 private:
  void Begin();
  bool EventsAreAsTheyWere() const;
  std::uint32_t PlaceOf(const QString& mark);
  void Put(const Tone& tone, char* place);

  const std::shared_ptr<Tune> tune_;
  std::shared_ptr<Tones> tones_;
  std::uint64_t changes_ = 0;
  std::int32_t last_abs_ref_ = 0;
  QByteArray head_;
  QByteArray events_;
  qsizetype count_ = 0;
  qsizetype packed_ = 0;
  int begun_ = 0;
  // The few spellings that events share, each by its place in a table. They are interned, so that their
  // addresses tell them apart.
  QHash<const QString*, std::uint32_t> places_;
  QStringList marks_;
  const QString* last_mark_ = nullptr;
  std::uint32_t last_place_ = 0;
};

// The tune of a head with its events behind it, as it was: the same events in the same order, the same mark
// of change, the same saved FileName. Throws Failure when the bytes are not what a packer makes; nothing in
// them is taken on trust.
std::shared_ptr<Tune> UnpackTune(const QByteArray& bytes);

}  // namespace zelmar
