#include "model/companions.h"

#include <limits>

#include "model/pulses.h"
#include "model/shell_sort.h"
#include "platform/numbers.h"

namespace zelmar {

namespace {

// Before every pulse when its own cannot be worked out.
std::int64_t PulseOf(const TempoChange& change, std::int16_t beats_per_bar, std::uint8_t beat_length) {
  try {
    return PulseFromBarBeatTick(change.Bar(), change.Beat(), change.Tick(), beats_per_bar, beat_length);
  } catch (const Failure&) {
    return std::numeric_limits<std::int64_t>::min();
  }
}

}  // namespace

std::shared_ptr<Rest> Rests::Add(double duration, std::int16_t bar, std::int16_t beat, std::int16_t tick,
                                 const QString& key) {
  auto item = std::make_shared<Rest>();
  item->SetDuration(duration);
  item->SetBar(bar);
  item->SetBeat(beat);
  item->SetTick(tick);
  return Append(std::move(item), key);
}

std::shared_ptr<Word> Words::Add(std::int16_t tick, std::int16_t beat, std::int16_t bar,
                                 const QString& word_text, const QString& key) {
  auto item = std::make_shared<Word>();
  item->SetTick(tick);
  item->SetBeat(beat);
  item->SetBar(bar);
  item->SetWordText(word_text);
  return Append(std::move(item), key);
}

std::shared_ptr<TempoChange> TempoChanges::Add(std::int16_t bar, std::int16_t beat, std::int16_t tick,
                                               std::int16_t new_tempo, std::int32_t millesecond_cum_time,
                                               const QString& key) {
  auto item = std::make_shared<TempoChange>();
  item->moves_ = moves_;
  item->MoveTo(bar, beat, tick);
  item->SetNewTempo(new_tempo);
  item->SetMillesecondCumTime(millesecond_cum_time);
  return Append(std::move(item), key);
}

void TempoChange::MoveTo(std::int16_t bar, std::int16_t beat, std::int16_t tick) {
  bar_ = bar;
  beat_ = beat;
  tick_ = tick;
  if (moves_) ++*moves_;
}

const TempoChange* TempoChanges::LastBefore(std::int64_t pulse, std::int16_t beats_per_bar,
                                            std::uint8_t beat_length) const {
  const TempoIndex::Origin origin{Revision(), *moves_, beats_per_bar, beat_length};
  if (!index_.IsOf(origin)) {
    std::vector<std::int64_t> pulses;
    pulses.reserve(static_cast<std::size_t>(Count()));
    ForEach(
        [&](const TempoChange& change) { pulses.push_back(PulseOf(change, beats_per_bar, beat_length)); });
    index_.Make(std::move(pulses), origin);
  }
  const qsizetype place = index_.LastBefore(pulse);
  return place == 0 ? nullptr : Item(place).get();
}

std::shared_ptr<ExpressionChange> ExpressionChanges::Add(std::int16_t bar, std::int16_t beat,
                                                         std::int16_t tick, std::uint8_t track,
                                                         std::uint8_t volume, bool all_tracks,
                                                         const QString& key) {
  auto item = std::make_shared<ExpressionChange>();
  item->SetBar(bar);
  item->SetBeat(beat);
  item->SetTick(tick);
  item->SetTrack(track);
  item->SetVolume(volume);
  item->SetAllTracks(all_tracks);
  return Append(std::move(item), key);
}

std::shared_ptr<Theme> Themes::Add(std::uint8_t theme_no, std::int16_t start_bar, std::int16_t end_bar,
                                   const QString& theme_notes, std::uint8_t track_number, std::int16_t rank,
                                   const QString& key) {
  auto item = std::make_shared<Theme>();
  item->SetThemeNo(theme_no);
  item->SetThemeStartBar(start_bar);
  item->SetThemeEndBar(end_bar);
  item->SetThemeNotes(theme_notes);
  item->SetTrackNumber(track_number);
  item->SetRank(rank);
  return Append(std::move(item), key);
}

std::shared_ptr<Track> Tracks::Add(const QString& description, std::uint8_t track_number,
                                   std::uint8_t channel, std::uint8_t instrument, bool muted,
                                   std::uint8_t bank_msb, std::uint8_t bank_lsb, const QString& key) {
  auto item = std::make_shared<Track>();
  item->SetDescription(description);
  item->SetTrackNumber(track_number);
  item->SetChannel(channel);
  item->SetInstrument(instrument);
  item->SetMuted(muted);
  item->SetBankMSB0(bank_msb);
  item->SetBankLSB32(bank_lsb);
  return Append(std::move(item), key);
}

std::shared_ptr<TrackCount> TrackCounts::Add(std::uint8_t track_number, std::int32_t event_count,
                                             const QString& key) {
  auto item = std::make_shared<TrackCount>();
  item->SetTrackNumber(track_number);
  item->SetEventCount(event_count);
  return Append(std::move(item), key);
}

std::shared_ptr<PlayingNote> PlayingNotes::Add(std::int32_t abs_ref, std::int16_t row, const QString& key) {
  auto item = std::make_shared<PlayingNote>();
  item->SetAbsRef(abs_ref);
  item->SetRow(row);
  return Append(std::move(item), key);
}

std::shared_ptr<ToneBank> Tonebanks::Add(std::uint8_t patch, const QString& bank_name, std::uint8_t bank_lsb,
                                         std::uint8_t bank_msb, const QString& key) {
  auto item = std::make_shared<ToneBank>();
  item->SetPatch(patch);
  item->SetBankName(bank_name);
  item->SetBankLSB(bank_lsb);
  item->SetBankMSB(bank_msb);
  return Append(std::move(item), key);
}

std::shared_ptr<Box> Boxes::Add(const QString& main_text, std::int32_t x1, std::int32_t x2, std::int32_t y1,
                                std::int32_t y2, const QString& key) {
  auto item = std::make_shared<Box>();
  item->SetMainText(main_text);
  item->Setx1(x1);
  item->Setx2(x2);
  item->Sety1(y1);
  item->Sety2(y2);
  return Append(std::move(item), key);
}

std::shared_ptr<FoundTheme> FoundThemes::Add(const QString& title, const QString& file_name,
                                             const QString& key) {
  auto item = std::make_shared<FoundTheme>();
  item->SetTitle(title);
  item->SetFileName(file_name);
  return Append(std::move(item), key);
}

std::shared_ptr<MidiEvent> MidiEvents::Add(const QString& message_type, std::uint8_t channel,
                                           std::int32_t cum_time, std::uint8_t pitch, std::uint8_t volume,
                                           const QString& key) {
  auto item = std::make_shared<MidiEvent>();
  item->SetMessageType(message_type);
  item->SetChannel(channel);
  item->SetCumTime(cum_time);
  item->SetPitch(pitch);
  item->SetVolume(volume);
  return Append(std::move(item), key);
}

std::shared_ptr<Melody> Melodies::Add(const QString& file_name, const QString& title,
                                      const QString& theme_notes, const QString& composer,
                                      std::int16_t start_bar, std::int16_t stop_bar, std::uint8_t theme_track,
                                      const QString& first_ten_notes, std::int16_t rank, const QString& key) {
  auto item = std::make_shared<Melody>();
  item->SetFileName(file_name);
  item->SetTitle(title);
  item->SetThemeNotes(theme_notes);
  item->SetComposer(composer);
  item->SetStartBar(start_bar);
  item->SetStopBar(stop_bar);
  item->SetThemeTrack(theme_track);
  item->SetFirstTenNotes(first_ten_notes);
  item->SetRank(rank);
  return Append(std::move(item), key);
}

void Melodies::SortByRank() {
  std::vector<SortColumn> columns;
  std::vector<std::pair<std::shared_ptr<Melody>, QString>> items;
  for (const auto& melody : *this) {
    columns.push_back({Narrow<std::int32_t>(columns.size()), melody->Rank()});
    items.emplace_back(melody, KeyOf(Narrow<qsizetype>(columns.size())));
  }
  ShellSortByKey(columns, Narrow<std::int32_t>(columns.size()));
  Clear();
  for (const SortColumn& column : columns) {
    auto& [melody, key] = items[static_cast<std::size_t>(column.position)];
    Append(std::move(melody), key);
  }
}

void Melodies::ExtractTop(std::int16_t count) {
  while (Count() > std::max<qsizetype>(count, 0)) Remove(Count());
}

}  // namespace zelmar
