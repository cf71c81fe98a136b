// One piece of music in memory: catalogue data, events, tracks, words, themes, the tempo and expression maps,
// the time model, and where it stands.
//
// Views borrow a tune and listen to its events, which are raised synchronously. Times are bar and beat from 1
// and tick from 0; durations are crotchets. What sounds is left to the player that sound_link.h gives it.
#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>

#include "model/companions.h"
#include "model/tones.h"
#include "model/tune_playback.h"
#include "model/tune_position.h"

// A property whose writing marks the tune as changed.
#define ZELMAR_MARKING_PROPERTY(Type, Name, Default) \
 public:                                             \
  const Type& Name() const {                         \
    return Name##_;                                  \
  }                                                  \
  void Set##Name(const Type& value) {                \
    Name##_ = value;                                 \
    SetChangedSinceLastSaved(true);                  \
  }                                                  \
                                                     \
 private:                                            \
  Type Name##_ = Default;

namespace zelmar {

class Tune : public QObject, public std::enable_shared_from_this<Tune> {
  Q_OBJECT

 public:
  Tune();
  ~Tune() override;

  // --- Collections ---

  const std::shared_ptr<zelmar::Tones>& Tones() const { return tones_; }
  void SetTones(std::shared_ptr<zelmar::Tones> tones);
  const std::shared_ptr<zelmar::Tracks>& Tracks() const { return tracks_; }
  void SetTracks(std::shared_ptr<zelmar::Tracks> tracks) { tracks_ = std::move(tracks); }
  // Created on first read, like TempoChanges and Words.
  const std::shared_ptr<zelmar::Themes>& Themes();
  void SetThemes(std::shared_ptr<zelmar::Themes> themes) { themes_ = std::move(themes); }
  const std::shared_ptr<zelmar::TempoChanges>& TempoChanges();
  void SetTempoChanges(std::shared_ptr<zelmar::TempoChanges> changes);
  const std::shared_ptr<zelmar::Words>& Words();
  void SetWords(std::shared_ptr<zelmar::Words> words);
  // Null until MakeExpressionMap has run.
  const std::shared_ptr<zelmar::ExpressionChanges>& ExpressionChanges() const { return expression_changes_; }
  void SetExpressionChanges(std::shared_ptr<zelmar::ExpressionChanges> changes) {
    expression_changes_ = std::move(changes);
  }

  // Adds the tone to Tones under its AbsRef, gives it the tune's beats per bar, raises LastAbsRef and marks
  // the tune changed. Throws DuplicateKeyError when the AbsRef is in use.
  std::shared_ptr<Tone> Add(std::shared_ptr<Tone> tone);
  // These go straight to Tones; Remove does not mark the tune changed.
  void Remove(qsizetype position) { tones_->Remove(position); }
  void Remove(const QString& key) { tones_->Remove(key); }
  const std::shared_ptr<Tone>& Item(qsizetype position) const { return tones_->Item(position); }
  const std::shared_ptr<Tone>& Item(const QString& key) const { return tones_->Item(key); }
  qsizetype Count() const { return tones_->Count(); }
  auto begin() const { return tones_->begin(); }
  auto end() const { return tones_->end(); }

  // Highest bar of any event, 0 for an empty tune. A note-off at the very head of a bar counts for the bar
  // before, which its note fills. Walks all events at each read and keeps the answer.
  std::int16_t BarCount();
  // The answer of the last BarCount, 0 before the first.
  std::int16_t BarCountAsRead() const { return bar_count_; }
  std::int16_t TrackCount();

  // --- Tempo, metre, mode ---

  // Crotchets a minute. Writing sets TempoCurrent and MsPerCrotchet as well; throws DivisionError for 0.
  std::int16_t Tempo() const { return tempo_; }
  void SetTempo(std::int16_t tempo);
  // Tempo in force at the playback position.
  std::int16_t TempoCurrent() const { return position_.TempoCurrent(); }
  // Length of a crotchet in milliseconds at the tempo in force. The times of events do not hang on it: they
  // are counted from Tempo and the tempo map.
  float MsPerCrotchet() const { return position_.MsPerCrotchet(); }

  // Denominator of the time signature. Writing sets PulsesPerBeat, which a beat length of 0 leaves at 0.
  std::uint8_t BeatLength() const { return beat_length_; }
  void SetBeatLength(std::uint8_t beat_length);
  std::int32_t PulsesPerBeat() const { return pulses_per_beat_; }

  // "GM", "GM2", "GS" or "XG". Any other text is stored as "GM" after a warning.
  const QString& MIDIMode() const { return midi_mode_; }
  void SetMIDIMode(const QString& mode);

  // --- Changes ---

  // Set by the properties that mark, by Add and by whoever changes an event in place; reset by the loader and
  // the saver.
  bool ChangedSinceLastSaved() const { return changed_since_last_saved_; }
  void SetChangedSinceLastSaved(bool changed);
  // How often the tune was marked as changed, the metronome left out: by it the keeper of a copy knows
  // whether the copy is still good.
  std::uint64_t Changes() const { return changes_; }
  // What Changes was when the tune was last loaded or saved, and its FileName then; null for a tune that
  // never was.
  std::uint64_t ChangesSaved() const { return changes_saved_; }
  const QString& SavedFileName() const { return saved_file_name_; }

  // Velocity of the metronome's click. Writing marks the tune as changed and counts as no change of it.
  std::int16_t MetroVolume() const { return metro_volume_; }
  void SetMetroVolume(std::int16_t volume) {
    metro_volume_ = volume;
    changed_since_last_saved_ = true;
  }

  // --- Preparation ---

  // Throws away all note-offs and makes one for each note, at the end of Tones. Throws OverflowError for a
  // note whose end has no place, DivisionError for a metre of 0 and DuplicateKeyError when a number behind
  // LastAbsRef is in use; Tones and LastAbsRef are then as they were.
  void CalcNotesOff();
  // Puts Tones in the order of event_order.h, raising SortPercent as it goes. A listener may change the
  // events: they are sorted as they are at the end.
  void SortStartTimes();
  // Rebuild the maps from the events, which must be sorted.
  void MakeTempoMap();
  void MakeExpressionMap();
  // Milliseconds from the start of the tune to a position, by the tempo map. Throws as PulseFromBarBeatTick
  // does.
  std::int32_t TimeFromPulse(std::int16_t bar, std::int16_t beat, std::int16_t tick,
                             std::int16_t beats_per_bar, std::uint8_t beat_length) const;

  // --- Analysis ---

  // The tonic and the mode: "Bb Major". Throws SubscriptError for a signature outside -7 to 7 and for a mode
  // above 1.
  QString key() const;
  // The major key of the signature, empty for a signature outside -7 to 7. Writing another text than one of
  // the fifteen names leaves the signature as it was; every writing marks the tune changed.
  QString EquivMajorKey() const;
  void SetEquivMajorKey(const QString& name);

  // Gives every event the spelling that the key asks for. An event that needs none keeps the mark it has.
  void CalcEnharmonics();
  // Rebuilds the rests of a track from its notes; their ends in Tones do not count. Throws SubscriptError for
  // a track that the tune does not have, DivisionError when BeatLength is 0.
  void CalcGaps(std::uint8_t track_number);

  // --- Tunes from lists ---

  // Adds a track and one note of one beat for each pitch, from bar 1 on. Throws DivisionError when
  // BeatsPerBar or BeatLength is 0.
  void CreateMelody(std::uint8_t instrument, std::uint8_t volume, std::uint8_t channel,
                    const QStringList& pitches);
  // The same with the pitches from index 1 to `count`; the text at index 0 is not read. Throws SubscriptError
  // when the list ends before that.
  void CreateMelodyArray(std::uint8_t instrument, std::uint8_t volume, std::uint8_t channel,
                         const QStringList& pitches, std::int32_t count);
  // Gives the events of Tones, in order, the durations in crotchets and lays them out end to end. Throws
  // SubscriptError at the first duration that finds no event, DivisionError as CreateMelody does.
  void CreateRhythm(const QList<double>& durations);
  // The same with the durations from index 1 to the end of the list or the first that is not above 0. A
  // duration above 100 is a rest of that many crotchets less 100, and takes no event.
  void CreateRhythmArray(const QList<float>& durations);

  // --- Playback ---

  // Plays from the head of `start_bar`, 0 meaning 1 and corrected in place, in the tempo in force there and
  // with the controllers and bends that stand before it. Returns when playback has ended; serves events
  // meanwhile, and the tune lives until then. The caller sets MelodyStartTime first. Within a playing of this
  // tune it takes that one's place.
  void Play(std::int16_t& start_bar);
  void Play();
  // As Play, but within a playing of this tune it leaves the new one to the call of Play that is under way
  // and returns once all is ready; that call returns at the end of the last playing. So any number of jumps
  // follow one another on the one stack.
  void JumpTo(std::int16_t start_bar);
  // Stops playback from anywhere; may be called when nothing plays.
  void Stopit();
  // Stands at bar 1, beat 1 and raises Rewound: what Stop does beside ending the playing.
  void Rewind();
  // Handles the event under the cursor: what the timer does every TimerInterval.
  void MelodyTest();
  void TuneQuilTimer_bang() { MelodyTest(); }
  void TuneQuilTimer_NewBeat();

  // The place of the cursor in Tones, from 1, and the event under it: as the last step of the playing found
  // them. Null before the first playing and behind a natural end.
  std::int32_t PlayIndex() const;
  const std::shared_ptr<Tone>& CurrentTone() const;
  std::int16_t PlayStartBar() const;
  // Another one for each playing.
  const std::shared_ptr<QuilTimer>& TuneQuilTimer() const;

  const TunePosition& Position() const { return position_; }
  TunePosition& Position() { return position_; }
  std::int16_t BarNumber() const { return position_.BarNumber(); }
  void SetBarNumber(std::int16_t bar) { position_.SetBarNumber(bar); }
  std::int16_t BeatWithinBar() const { return position_.BeatWithinBar(); }
  void SetBeatWithinBar(std::int16_t beat) { position_.SetBeatWithinBar(beat); }
  std::int32_t BeatNumber() const { return position_.BeatNumber(); }

 Q_SIGNALS:
  void SortPercent(std::int16_t percent);
  void SortStarted();
  void Finished();
  void Ticked();
  void NoteStarted(zelmar::Tone& tone);
  void ControlEvent(zelmar::Tone& tone);
  void NoteStopped(zelmar::Tone& tone);
  void MelodyTested();
  // The tune stands at its first beat again: everything that shows a place in it shows that one.
  void Rewound();

 private:
  std::shared_ptr<zelmar::Tones> tones_ = std::make_shared<zelmar::Tones>();
  std::shared_ptr<zelmar::Tracks> tracks_ = std::make_shared<zelmar::Tracks>();
  std::shared_ptr<zelmar::Themes> themes_;
  std::shared_ptr<zelmar::TempoChanges> tempo_changes_;
  std::shared_ptr<zelmar::Words> words_;
  std::shared_ptr<zelmar::ExpressionChanges> expression_changes_;

  bool changed_since_last_saved_ = true;
  std::uint64_t changes_ = 0;
  std::uint64_t changes_saved_ = 0;
  QString saved_file_name_;
  std::int16_t metro_volume_ = 0;

  std::int16_t tempo_ = 120;
  std::uint8_t beat_length_ = 4;
  std::int32_t pulses_per_beat_ = 120;
  QString midi_mode_ = QStringLiteral("GM");
  std::int16_t bar_count_ = 0;    // as last read
  std::int16_t track_count_ = 0;  // as last read

  TunePosition position_;
  // Milliseconds, as it was when the tempo map was made: a new Tempo waits for the next Play.
  std::int32_t mapped_crotchet_ = 500;
  const std::unique_ptr<TunePlayback> playback_;

  ZELMAR_MARKING_PROPERTY(QString, Title, QStringLiteral("No Title Yet"))
  ZELMAR_MARKING_PROPERTY(QString, FileName, QStringLiteral("Temp"))  // CodeName in the database
  ZELMAR_PROPERTY(QString, Description, {})
  ZELMAR_MARKING_PROPERTY(QString, Composer, {})
  ZELMAR_MARKING_PROPERTY(QString, Category, {})
  ZELMAR_MARKING_PROPERTY(QString, SoloInstrument, {})
  ZELMAR_MARKING_PROPERTY(QString, Ensemble, {})
  ZELMAR_MARKING_PROPERTY(QString, Style, {})
  ZELMAR_MARKING_PROPERTY(QString, Country, {})
  ZELMAR_MARKING_PROPERTY(QString, Length, {})
  ZELMAR_PROPERTY(std::int16_t, Rank, 9999)  // lower is more popular
  ZELMAR_MARKING_PROPERTY(std::int16_t, BeatsPerBar, 4)
  ZELMAR_MARKING_PROPERTY(std::int16_t, KeySignature, 0)  // sharps, or flats below 0
  ZELMAR_MARKING_PROPERTY(std::uint8_t, KeyMode, 0)       // 0 major, 1 minor
  ZELMAR_MARKING_PROPERTY(std::uint8_t, MelodyTrack, 1)
  ZELMAR_MARKING_PROPERTY(std::uint8_t, AccompPattern, 255)
  ZELMAR_MARKING_PROPERTY(std::int32_t, LastAbsRef, 1)
  ZELMAR_PROPERTY(std::int16_t, HearTick, 0)       // non-zero when the metronome sounds
  ZELMAR_PROPERTY(std::uint8_t, TickSound, 60)     // pitch of the click on channel 10
  ZELMAR_PROPERTY(std::int16_t, TimerInterval, 2)  // milliseconds
  ZELMAR_PROPERTY(bool, TrackFilterOn, false)
  ZELMAR_PROPERTY(bool, Playing, false)
  ZELMAR_PROPERTY(bool, Sorted, false)
  ZELMAR_PROPERTY(float, MelodyStartTime, 0.0F)  // seconds since midnight
};

// The first ten notes of the melody track, transposed to the key of no sharps or flats, as cells of two
// characters. Sets the tune's KeySignature to 0: the caller sets it again before each use.
QString GetFirstTenNotes(Tune& tune);

}  // namespace zelmar
