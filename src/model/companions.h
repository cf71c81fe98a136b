// The small classes beside the events of a tune, and their collections. Each Add creates the object, puts it
// at the end under the optional key and returns it; it throws DuplicateKeyError when the key is in use.
#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "model/collection.h"
#include "model/property.h"
#include "model/tempo_index.h"

namespace zelmar {

// A silence of one track, worked out from its notes.
class Rest {
  ZELMAR_PROPERTY(std::int16_t, Bar, 1)
  ZELMAR_PROPERTY(std::int16_t, Beat, 1)
  ZELMAR_PROPERTY(std::int16_t, Tick, 0)
  ZELMAR_PROPERTY(double, Duration, 1.0)  // crotchets
};

class Rests : public TextKeyedCollection<Rest> {
 public:
  std::shared_ptr<Rest> Add(double duration, std::int16_t bar, std::int16_t beat, std::int16_t tick,
                            const QString& key = {});
};

// One syllable or word of lyrics.
class Word {
  ZELMAR_PROPERTY(std::int16_t, Bar, 1)
  ZELMAR_PROPERTY(std::int16_t, Beat, 1)
  ZELMAR_PROPERTY(std::int16_t, Tick, 0)
  ZELMAR_PROPERTY(QString, WordText, {})
};

class Words : public TextKeyedCollection<Word> {
 public:
  // The three fields of time run backwards here.
  std::shared_ptr<Word> Add(std::int16_t tick, std::int16_t beat, std::int16_t bar, const QString& word_text,
                            const QString& key = {});
};

// A change of tempo with the time at which it comes.
class TempoChange {
 public:
  std::int16_t Bar() const { return bar_; }
  void SetBar(std::int16_t bar) { MoveTo(bar, beat_, tick_); }
  std::int16_t Beat() const { return beat_; }
  void SetBeat(std::int16_t beat) { MoveTo(bar_, beat, tick_); }
  std::int16_t Tick() const { return tick_; }
  void SetTick(std::int16_t tick) { MoveTo(bar_, beat_, tick); }

 private:
  friend class TempoChanges;
  void MoveTo(std::int16_t bar, std::int16_t beat, std::int16_t tick);

  std::shared_ptr<std::uint64_t> moves_;  // of all changes of its collection
  std::int16_t bar_ = 1;
  std::int16_t beat_ = 1;
  std::int16_t tick_ = 0;
  ZELMAR_PROPERTY(std::int16_t, NewTempo, 120)          // crotchets a minute
  ZELMAR_PROPERTY(std::int32_t, MillesecondCumTime, 0)  // milliseconds from the start of the tune
};

class TempoChanges : public TextKeyedCollection<TempoChange> {
 public:
  std::shared_ptr<TempoChange> Add(std::int16_t bar, std::int16_t beat, std::int16_t tick,
                                   std::int16_t new_tempo, std::int32_t millesecond_cum_time,
                                   const QString& key = {});

  // The last one, in the order of the collection, that lies before a pulse of that metre; null when none
  // does. Its pulse is worked out by the caller, who meets there what makes that fail: for this search such a
  // change lies before every pulse. Allocates nothing unless a change has come, gone or moved, or the metre
  // is another than at the search before.
  const TempoChange* LastBefore(std::int64_t pulse, std::int16_t beats_per_bar,
                                std::uint8_t beat_length) const;

 private:
  std::shared_ptr<std::uint64_t> moves_ = std::make_shared<std::uint64_t>(0);
  mutable TempoIndex index_;
};

// A change of loudness, of one track or of all.
class ExpressionChange {
  ZELMAR_PROPERTY(std::int16_t, Bar, 1)
  ZELMAR_PROPERTY(std::int16_t, Beat, 1)
  ZELMAR_PROPERTY(std::int16_t, Tick, 0)
  ZELMAR_PROPERTY(std::uint8_t, Track, 0)
  ZELMAR_PROPERTY(std::uint8_t, Volume, 0)
  ZELMAR_PROPERTY(bool, AllTracks, false)
};

class ExpressionChanges : public TextKeyedCollection<ExpressionChange> {
 public:
  std::shared_ptr<ExpressionChange> Add(std::int16_t bar, std::int16_t beat, std::int16_t tick,
                                        std::uint8_t track, std::uint8_t volume, bool all_tracks,
                                        const QString& key = {});
};

// A marked passage of a tune. ThemeNotes is a short free text about it.
class Theme {
  ZELMAR_PROPERTY(std::uint8_t, ThemeNo, 1)
  ZELMAR_PROPERTY(std::int16_t, ThemeStartBar, 1)
  ZELMAR_PROPERTY(std::int16_t, ThemeEndBar, 9999)
  ZELMAR_PROPERTY(QString, ThemeNotes, {})
  ZELMAR_PROPERTY(std::uint8_t, TrackNumber, 0)
  ZELMAR_PROPERTY(std::int16_t, Rank, 0)
};

class Themes : public TextKeyedCollection<Theme> {
 public:
  std::shared_ptr<Theme> Add(std::uint8_t theme_no, std::int16_t start_bar, std::int16_t end_bar,
                             const QString& theme_notes, std::uint8_t track_number, std::int16_t rank,
                             const QString& key = {});
};

// One line of the score.
class Track {
 public:
  const std::shared_ptr<zelmar::Rests>& Rests() const { return rests_; }
  void SetRests(std::shared_ptr<zelmar::Rests> rests) { rests_ = std::move(rests); }

 private:
  std::shared_ptr<zelmar::Rests> rests_ = std::make_shared<zelmar::Rests>();

  ZELMAR_PROPERTY(QString, Description, {})
  ZELMAR_PROPERTY(std::uint8_t, TrackNumber, 0)
  ZELMAR_PROPERTY(std::uint8_t, Channel, 0)     // 1 to 16
  ZELMAR_PROPERTY(std::uint8_t, Instrument, 0)  // default patch
  ZELMAR_PROPERTY(bool, Muted, false)
  ZELMAR_PROPERTY(std::uint8_t, BankMSB0, 0)   // controller 0
  ZELMAR_PROPERTY(std::uint8_t, BankLSB32, 0)  // controller 32
  ZELMAR_PROPERTY(std::uint8_t, DefaultVolume, 80)
};

class Tracks : public TextKeyedCollection<Track> {
 public:
  // The key used throughout is the track number as decimal text.
  std::shared_ptr<Track> Add(const QString& description, std::uint8_t track_number, std::uint8_t channel,
                             std::uint8_t instrument, bool muted, std::uint8_t bank_msb,
                             std::uint8_t bank_lsb, const QString& key = {});
};

// Tally of events of a track.
class TrackCount {
  ZELMAR_PROPERTY(std::uint8_t, TrackNumber, 0)
  ZELMAR_PROPERTY(std::int32_t, EventCount, 0)
};

class TrackCounts : public TextKeyedCollection<TrackCount> {
 public:
  std::shared_ptr<TrackCount> Add(std::uint8_t track_number, std::int32_t event_count,
                                  const QString& key = {});
};

// The animated marker on a bar of a staff. Places in drawing units.
class CurrentNote {
  ZELMAR_PROPERTY(std::int32_t, AbsRef, 0)
  ZELMAR_PROPERTY(std::int32_t, x, 0)
  ZELMAR_PROPERTY(std::int32_t, Y, 0)
  ZELMAR_PROPERTY(std::int32_t, Xinc, 0)
  ZELMAR_PROPERTY(std::int32_t, Yinc, 0)
  ZELMAR_PROPERTY(std::int16_t, BirdType, 0)
  ZELMAR_PROPERTY(std::int16_t, BirdFrame, 0)
  ZELMAR_PROPERTY(std::int16_t, MaxFrames, 0)
};

// A note that sounds and whose row is lit.
class PlayingNote {
  ZELMAR_PROPERTY(std::int32_t, AbsRef, 0)
  ZELMAR_PROPERTY(std::int16_t, Row, 0)
};

class PlayingNotes : public TextKeyedCollection<PlayingNote> {
 public:
  std::shared_ptr<PlayingNote> Add(std::int32_t abs_ref, std::int16_t row, const QString& key = {});
};

// One patch of a bank table.
class ToneBank {
  ZELMAR_PROPERTY(std::uint8_t, Patch, 0)
  ZELMAR_PROPERTY(QString, BankName, {})
  ZELMAR_PROPERTY(std::uint8_t, BankLSB, 0)
  ZELMAR_PROPERTY(std::uint8_t, BankMSB, 0)
};

class Tonebanks : public TextKeyedCollection<ToneBank> {
 public:
  std::shared_ptr<ToneBank> Add(std::uint8_t patch, const QString& bank_name, std::uint8_t bank_lsb,
                                std::uint8_t bank_msb, const QString& key = {});
};

// A hit area on a picture, in drawing units.
class Box {
  ZELMAR_PROPERTY(QString, MainText, {})
  ZELMAR_PROPERTY(std::int32_t, x1, 0)
  ZELMAR_PROPERTY(std::int32_t, x2, 0)
  ZELMAR_PROPERTY(std::int32_t, y1, 0)
  ZELMAR_PROPERTY(std::int32_t, y2, 0)
};

class Boxes : public TextKeyedCollection<Box> {
 public:
  std::shared_ptr<Box> Add(const QString& main_text, std::int32_t x1, std::int32_t x2, std::int32_t y1,
                           std::int32_t y2, const QString& key = {});
};

// A hit of a theme search.
class FoundTheme {
  ZELMAR_PROPERTY(QString, Title, {})
  ZELMAR_PROPERTY(QString, FileName, {})
};

class FoundThemes : public TextKeyedCollection<FoundTheme> {
 public:
  std::shared_ptr<FoundTheme> Add(const QString& title, const QString& file_name, const QString& key = {});
};

// Whether a track is filtered out.
class TrackFilter {
  ZELMAR_PROPERTY(bool, FilterOn, false)
};

// One message read from a MIDI file. CumTime counts ticks from the start of its track.
class MidiEvent {
  ZELMAR_PROPERTY(QString, MessageType, {})
  ZELMAR_PROPERTY(std::uint8_t, Channel, 0)
  ZELMAR_PROPERTY(std::int32_t, CumTime, 0)
  ZELMAR_PROPERTY(std::uint8_t, Pitch, 0)
  ZELMAR_PROPERTY(std::uint8_t, Volume, 0)
};

class MidiEvents : public TextKeyedCollection<MidiEvent> {
 public:
  std::shared_ptr<MidiEvent> Add(const QString& message_type, std::uint8_t channel, std::int32_t cum_time,
                                 std::uint8_t pitch, std::uint8_t volume, const QString& key = {});

  const std::shared_ptr<Tonebanks>& ToneBank() const { return tone_bank_; }

 private:
  std::shared_ptr<Tonebanks> tone_bank_ = std::make_shared<Tonebanks>();
};

// One searchable item: a whole tune or one of its themes.
class Melody {
  ZELMAR_PROPERTY(std::int16_t, Rank, 0)
  ZELMAR_PROPERTY(QString, FirstTenNotes, {})  // note digest, cells of two characters
  ZELMAR_PROPERTY(std::uint8_t, ThemeTrack, 0)
  ZELMAR_PROPERTY(std::int16_t, StopBar, 0)
  ZELMAR_PROPERTY(std::int16_t, StartBar, 0)
  ZELMAR_PROPERTY(QString, Composer, {})
  ZELMAR_PROPERTY(QString, ThemeNotes, {})
  ZELMAR_PROPERTY(QString, Title, {})
  ZELMAR_PROPERTY(QString, FileName, {})  // CodeName of the tune
};

class Melodies : public TextKeyedCollection<Melody> {
 public:
  std::shared_ptr<Melody> Add(const QString& file_name, const QString& title, const QString& theme_notes,
                              const QString& composer, std::int16_t start_bar, std::int16_t stop_bar,
                              std::uint8_t theme_track, const QString& first_ten_notes, std::int16_t rank,
                              const QString& key = {});

  // Ascending by Rank. Items of one rank may come in any order; keys are kept.
  void SortByRank();
  // Removes the last items until no more than `count` remain.
  void ExtractTop(std::int16_t count);
};

}  // namespace zelmar
