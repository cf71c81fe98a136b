// A bar is drawn and read again as a player reads it: the signs give the notes, the rests their lengths.
#include <array>
#include <map>

#include "bar_fixture.h"
#include "support/dice.h"

namespace zelmar {
namespace {

using testing_support::Dice;

constexpr char kLetters[] = "CDEFGAB";
constexpr int kNaturals[] = {0, 2, 4, 5, 7, 9, 11};

// How a key alters a letter: -1, 0 or 1.
int InKey(char letter, int key) {
  static const std::string kSharps = "FCGDAEB", kFlats = "BEADGCF";
  if (key > 0 && static_cast<int>(kSharps.find(letter)) < key) return 1;
  if (key < 0 && static_cast<int>(kFlats.find(letter)) < -key) return -1;
  return 0;
}

// An altered note on a white key: E# and its like.
bool IsWhite(char letter, int altered) {
  return (altered > 0 && (letter == 'E' || letter == 'B')) ||
         (altered < 0 && (letter == 'C' || letter == 'F'));
}

// What the tone is marked with to be spelled as that letter: nothing where that is its own name.
const char16_t* MarkOf(char letter, int altered) {
  if (altered == 0) return u" ";
  const bool own =
      !IsWhite(letter, altered) &&
      (altered > 0 ? letter == 'C' || letter == 'F' : letter == 'E' || letter == 'A' || letter == 'B');
  return own ? u" " : altered > 0 ? u"#" : u"b";
}

class ReadBars : public BarTest, public ::testing::WithParamInterface<int> {};

TEST_P(ReadBars, GiveTheNotesByTheirSignsAndTheKey) {
  constexpr int kNotes = 8;
  for (unsigned seed = 1; seed <= 80; ++seed) {
    Dice dice(seed);
    StartTune(kNotes, 4, static_cast<std::int16_t>(GetParam()));
    std::array<int, kNotes> letters{}, altered{};
    QString spelled;
    const int first = dice(7);
    for (std::size_t i = 0; i < kNotes; ++i) {
      letters[i] = (first + dice(2)) % 7;  // two letters, so that signs meet
      altered[i] = dice(3) - 1;
      // A white key that the key itself calls by another letter carries no sign of its own.
      if (IsWhite(kLetters[letters[i]], altered[i]) && InKey(kLetters[letters[i]], GetParam()) == altered[i])
        altered[i] = 0;
      AddNote(60 + kNaturals[letters[i]] + altered[i], static_cast<int>(i) + 1, 0, 1.0,
              MarkOf(kLetters[letters[i]], altered[i]));
      spelled += QLatin1Char(kLetters[letters[i]]) + QString(altered[i] > 0   ? "# "
                                                             : altered[i] < 0 ? "b "
                                                                              : " ");
    }
    Show();
    std::map<int, int> state;
    for (std::size_t i = 0; i < kNotes; ++i) {
      const double x = BeatX(static_cast<double>(i) + 1.0) * kGap;
      const auto has = [&](Role role) {
        for (const Primitive& stroke : Of(role)) {
          const double right = sheet_.StaffDrawing().BoxOf(stroke).center().x();
          if (right > x - 2.2 * kGap && right < x) return true;
        }
        return false;
      };
      const bool sharp = has(Role::kSharp), flat = has(Role::kFlat), natural = has(Role::kNatural);
      EXPECT_LE(sharp + flat + natural, 1)
          << "note " << i + 1 << " of " << spelled.toStdString() << "in " << GetParam();
      const auto known = state.find(letters[i]);
      int read = known != state.end() ? known->second : InKey(kLetters[letters[i]], GetParam());
      if (sharp) read = 1;
      if (flat) read = -1;
      if (natural) read = 0;
      state[letters[i]] = read;
      ASSERT_EQ(read, altered[i]) << "note " << i + 1 << " of " << spelled.toStdString() << "in "
                                  << GetParam() << ", seed " << seed;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Keys, ReadBars, ::testing::Range(-7, 8));

class ReadRests : public BarTest {
 protected:
  // Shapes drawn for one rest, by what they stand for.
  std::map<Role, std::size_t> Draw(double duration, int beat, int tick) {
    sheet_.Attach(tune_);
    sheet_.ClearStaff();
    sheet_.MeasureHead();
    Rest rest;
    rest.SetBeat(static_cast<std::int16_t>(beat));
    rest.SetTick(static_cast<std::int16_t>(tick));
    rest.SetDuration(duration);
    sheet_.DrawRest(rest);
    std::map<Role, std::size_t> shapes;
    for (const Role role : {Role::kWholeBarRest, Role::kMinimRest, Role::kCrotchetRest, Role::kQuaverRest,
                            Role::kSemiquaverRest, Role::kDot})
      if (CountOf(role) > 0) shapes[role] = CountOf(role);
    return shapes;
  }
};

TEST_F(ReadRests, AddUpToTheLengthThatIsRested) {
  const std::pair<Role, double> kValues[] = {{Role::kMinimRest, 2.0},
                                             {Role::kCrotchetRest, 1.0},
                                             {Role::kQuaverRest, 0.5},
                                             {Role::kSemiquaverRest, 0.25}};
  std::map<Role, std::size_t> strokes;  // of one rest of each kind
  for (const auto& [role, value] : kValues) {
    const auto shapes = Draw(value, 1, 0);
    ASSERT_EQ(shapes.size(), 1U) << value;
    ASSERT_EQ(shapes.begin()->first, role) << value;
    strokes[role] = shapes.begin()->second;
  }
  for (int quarters = 1; quarters <= 14; ++quarters)
    for (int start = 0; start + quarters <= 16; ++start) {
      const auto shapes = Draw(quarters / 4.0, start / 4 + 1, start % 4 * 30);
      double sum = 0;
      for (const auto& [role, value] : kValues) {
        const auto found = shapes.find(role);
        if (found == shapes.end()) continue;
        EXPECT_EQ(found->second % strokes[role], 0U);
        sum += static_cast<double>(found->second / strokes[role]) * value;
      }
      EXPECT_EQ(shapes.count(Role::kWholeBarRest), 0U);
      EXPECT_EQ(sum, quarters / 4.0) << quarters << " quarters from " << start;
    }
}

TEST_F(ReadRests, BeginWithTheirShortestPartOffTheBeat) {
  for (const auto& [tick, duration, role] :
       {std::tuple(60, 1.5, Role::kQuaverRest), std::tuple(60, 2.5, Role::kQuaverRest),
        std::tuple(90, 1.25, Role::kSemiquaverRest), std::tuple(30, 0.75, Role::kSemiquaverRest)}) {
    Draw(duration, 1, tick);
    double leftmost = 1e9;
    Role first = Role::kHeading;
    for (const Primitive& primitive : sheet_.StaffDrawing().Primitives()) {
      const double left = sheet_.StaffDrawing().BoxOf(primitive).center().x();
      if (left < leftmost) {
        leftmost = left;
        first = primitive.role;
      }
    }
    EXPECT_EQ(first, role) << duration << " at " << tick;
  }
}

TEST_F(ReadRests, OfAWholeBarAreOneSign) {
  for (const int beats : {2, 3, 4}) {
    StartTune(static_cast<std::int16_t>(beats));
    const auto shapes = Draw(beats, 1, 0);
    ASSERT_EQ(shapes.size(), 1U) << beats;
    EXPECT_EQ(shapes.begin()->first, Role::kWholeBarRest) << beats;
  }
}

TEST_F(ReadRests, OfATrackAreThoseOfTheBarOnShow) {
  sheet_.SetShowRests(true);
  StartTune();
  AddNote(67, 2, 0, 1.0, u" ", 1);
  AddNote(67, 1, 0, 4.0, u" ", 3);
  tune_->CalcNotesOff();
  tune_->SortStartTimes();
  tune_->CalcGaps(1);
  const std::vector<std::map<Role, bool>> wanted = {
      {{Role::kCrotchetRest, true}, {Role::kMinimRest, true}}, {{Role::kWholeBarRest, true}}, {}};
  for (std::int16_t bar = 1; bar <= 3; ++bar) {
    Show(bar);
    sheet_.DisplayRests(bar, 1);
    for (const Role role : {Role::kWholeBarRest, Role::kMinimRest, Role::kCrotchetRest, Role::kQuaverRest,
                            Role::kSemiquaverRest})
      EXPECT_EQ(CountOf(role) > 0, wanted[static_cast<std::size_t>(bar - 1)].count(role) > 0)
          << bar << ' ' << static_cast<int>(role);
  }
}

}  // namespace
}  // namespace zelmar
