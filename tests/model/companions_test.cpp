#include "model/companions.h"

#include <gtest/gtest.h>

namespace zelmar {
namespace {

const QString kText = QStringLiteral("text");
const QString kKey = QStringLiteral("k");

TEST(Companions, HaveTheirDefaults) {
  const Theme theme;
  EXPECT_EQ(theme.ThemeNo(), 1);
  EXPECT_EQ(theme.ThemeStartBar(), 1);
  EXPECT_EQ(theme.ThemeEndBar(), 9999);
  EXPECT_TRUE(theme.ThemeNotes().isEmpty());
  EXPECT_EQ(theme.TrackNumber(), 0);
  EXPECT_EQ(theme.Rank(), 0);
  const Track track;
  EXPECT_EQ(track.TrackNumber(), 0);
  EXPECT_EQ(track.Channel(), 0);
  EXPECT_EQ(track.Instrument(), 0);
  EXPECT_FALSE(track.Muted());
  EXPECT_EQ(track.BankMSB0(), 0);
  EXPECT_EQ(track.BankLSB32(), 0);
  EXPECT_EQ(track.DefaultVolume(), 80);
  ASSERT_NE(track.Rests(), nullptr);
}

TEST(Companions, AddTakesItsArgumentsInOrder) {
  Rests rests;
  const auto rest = rests.Add(1.5, 2, 3, 4, kKey);
  EXPECT_DOUBLE_EQ(rest->Duration(), 1.5);
  EXPECT_EQ(rest->Bar(), 2);
  EXPECT_EQ(rest->Beat(), 3);
  EXPECT_EQ(rest->Tick(), 4);
  EXPECT_EQ(rests.Item(kKey), rest);
  rests.Clear();
  EXPECT_EQ(rests.Count(), 0);

  Words words;
  const auto word = words.Add(1, 2, 3, kText, kKey);
  EXPECT_EQ(word->Tick(), 1);
  EXPECT_EQ(word->Beat(), 2);
  EXPECT_EQ(word->Bar(), 3);
  EXPECT_EQ(word->WordText(), kText);

  TempoChanges tempo_changes;
  const auto tempo = tempo_changes.Add(1, 2, 3, 4, 5, kKey);
  EXPECT_EQ(tempo->Bar(), 1);
  EXPECT_EQ(tempo->Beat(), 2);
  EXPECT_EQ(tempo->Tick(), 3);
  EXPECT_EQ(tempo->NewTempo(), 4);
  EXPECT_EQ(tempo->MillesecondCumTime(), 5);

  ExpressionChanges expressions;
  const auto expression = expressions.Add(1, 2, 3, 4, 5, true, kKey);
  EXPECT_EQ(expression->Bar(), 1);
  EXPECT_EQ(expression->Beat(), 2);
  EXPECT_EQ(expression->Tick(), 3);
  EXPECT_EQ(expression->Track(), 4);
  EXPECT_EQ(expression->Volume(), 5);
  EXPECT_TRUE(expression->AllTracks());

  Themes themes;
  const auto theme = themes.Add(1, 2, 3, kText, 4, 5, kKey);
  EXPECT_EQ(theme->ThemeNo(), 1);
  EXPECT_EQ(theme->ThemeStartBar(), 2);
  EXPECT_EQ(theme->ThemeEndBar(), 3);
  EXPECT_EQ(theme->ThemeNotes(), kText);
  EXPECT_EQ(theme->TrackNumber(), 4);
  EXPECT_EQ(theme->Rank(), 5);

  Tracks tracks;
  const auto track = tracks.Add(kText, 1, 2, 3, true, 4, 5, kKey);
  EXPECT_EQ(track->Description(), kText);
  EXPECT_EQ(track->TrackNumber(), 1);
  EXPECT_EQ(track->Channel(), 2);
  EXPECT_EQ(track->Instrument(), 3);
  EXPECT_TRUE(track->Muted());
  EXPECT_EQ(track->BankMSB0(), 4);
  EXPECT_EQ(track->BankLSB32(), 5);
  EXPECT_NE(track->Rests(), nullptr);

  TrackCounts counts;
  const auto tally = counts.Add(1, 70000, kKey);
  EXPECT_EQ(tally->TrackNumber(), 1);
  EXPECT_EQ(tally->EventCount(), 70000);

  PlayingNotes playing;
  const auto note = playing.Add(1, 2, kKey);
  EXPECT_EQ(note->AbsRef(), 1);
  EXPECT_EQ(note->Row(), 2);

  Tonebanks banks;
  const auto bank = banks.Add(1, kText, 2, 3, kKey);
  EXPECT_EQ(bank->Patch(), 1);
  EXPECT_EQ(bank->BankName(), kText);
  EXPECT_EQ(bank->BankLSB(), 2);
  EXPECT_EQ(bank->BankMSB(), 3);

  Boxes boxes;
  const auto box = boxes.Add(kText, 1, 2, 3, 4, kKey);
  EXPECT_EQ(box->MainText(), kText);
  EXPECT_EQ(box->x1(), 1);
  EXPECT_EQ(box->x2(), 2);
  EXPECT_EQ(box->y1(), 3);
  EXPECT_EQ(box->y2(), 4);

  FoundThemes found;
  const auto hit = found.Add(kText, QStringLiteral("code"), kKey);
  EXPECT_EQ(hit->Title(), kText);
  EXPECT_EQ(hit->FileName(), QStringLiteral("code"));

  MidiEvents events;
  const auto event = events.Add(kText, 1, 70000, 2, 3, kKey);
  EXPECT_EQ(event->MessageType(), kText);
  EXPECT_EQ(event->Channel(), 1);
  EXPECT_EQ(event->CumTime(), 70000);
  EXPECT_EQ(event->Pitch(), 2);
  EXPECT_EQ(event->Volume(), 3);
  ASSERT_NE(events.ToneBank(), nullptr);
  EXPECT_EQ(events.ToneBank()->Count(), 0);
}

TEST(Companions, ATrackFilterIsOff) {
  EXPECT_FALSE(TrackFilter().FilterOn());
  CurrentNote marker;
  marker.SetBirdFrame(3);
  EXPECT_EQ(marker.BirdFrame(), 3);
}

std::shared_ptr<Melody> AddRanked(Melodies& melodies, std::int16_t rank, const QString& key = {}) {
  return melodies.Add(QStringLiteral("file%1").arg(rank), QStringLiteral("title"), QStringLiteral("notes"),
                      QStringLiteral("composer"), 1, 2, 3, QStringLiteral("C D "), rank, key);
}

TEST(Melodies, AddTakesItsArgumentsInOrder) {
  Melodies melodies;
  const auto melody = AddRanked(melodies, 7);
  EXPECT_EQ(melody->FileName(), QStringLiteral("file7"));
  EXPECT_EQ(melody->Title(), QStringLiteral("title"));
  EXPECT_EQ(melody->ThemeNotes(), QStringLiteral("notes"));
  EXPECT_EQ(melody->Composer(), QStringLiteral("composer"));
  EXPECT_EQ(melody->StartBar(), 1);
  EXPECT_EQ(melody->StopBar(), 2);
  EXPECT_EQ(melody->ThemeTrack(), 3);
  EXPECT_EQ(melody->FirstTenNotes(), QStringLiteral("C D "));
  EXPECT_EQ(melody->Rank(), 7);
}

TEST(Melodies, SortByRankAscendingKeepingKeys) {
  Melodies melodies;
  for (const int rank : {5, 9999, -3, 7, 5, 1}) AddRanked(melodies, static_cast<std::int16_t>(rank));
  AddRanked(melodies, 2, kKey);
  melodies.SortByRank();
  QList<int> ranks;
  for (const auto& melody : melodies) ranks.append(melody->Rank());
  EXPECT_EQ(ranks, (QList<int>{-3, 1, 2, 5, 5, 7, 9999}));
  EXPECT_EQ(melodies.Item(kKey)->Rank(), 2);
}

TEST(Melodies, ExtractTopDropsTheLast) {
  Melodies melodies;
  for (std::int16_t rank = 1; rank <= 5; ++rank) AddRanked(melodies, rank);
  melodies.ExtractTop(9);
  EXPECT_EQ(melodies.Count(), 5);
  melodies.ExtractTop(2);
  ASSERT_EQ(melodies.Count(), 2);
  EXPECT_EQ(melodies.Item(2)->Rank(), 2);
  melodies.ExtractTop(0);
  EXPECT_EQ(melodies.Count(), 0);
}

}  // namespace
}  // namespace zelmar
