// The head of a row of staves: the time signature stands between the key and the first note and touches
// neither, however many bars are across.
#include <algorithm>
#include <memory>

#include "notation/ink.h"
#include "notation/track_staff.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

struct Metre {
  std::int16_t beats;
  std::uint8_t length;
};

constexpr Metre kMetres[] = {{2, 4}, {3, 8}, {6, 8}, {9, 8}, {12, 8}, {16, 16}};
constexpr Metre kOneAndTwoDigits[] = {{3, 8}, {12, 8}};
constexpr std::int16_t kBarsAcross[] = {1, 3, 4, 6, 12};
constexpr std::int16_t kF5 = 77, kGSharp5 = 80, kB4 = 71;

class StaffHead : public ::testing::TestWithParam<std::int16_t> {
 protected:
  void ShowStrip(bool words, const char* clef = "Treble") {
    if (words) tune_->Words()->Add(0, 1, 1, QStringLiteral("la"));
    strip_ = std::make_unique<TrackStaff>();
    strip_->resize(1000, 220);
    strip_->SetTune(tune_);
    strip_->SetBarsAcross(GetParam());
    strip_->SetShowWords(words);
    strip_->LoadBarsAcross(QLatin1String(clef));
  }

  // The first note of the bar; its stem goes down, to the left of its head.
  void SetNote(std::int16_t pitch) {
    const auto tone = std::make_shared<Tone>();
    tone->SetNumber(pitch);
    tone->SetDuration(1.0);
    tune_->Tones()->Clear();
    tune_->Add(tone);
  }

  const CtlQuilStaff& Draw(std::int16_t key, const Metre& metre) {
    tune_->SetKeySignature(key);
    tune_->SetBeatsPerBar(metre.beats);
    tune_->SetBeatLength(metre.length);
    strip_->RefreshAllStaffs(1);
    return *strip_->MyStaff().front();
  }

  // Boxes of ink in twips.
  struct Head {
    QRectF key;
    QRectF beats, length;  // the numbers of the time signature
    QRectF note;           // head and stem of the first note
    QRectF sign;           // null where it has none
  };

  static Head HeadOf(const CtlQuilStaff& staff) {
    const Drawing& drawing = staff.StaffDrawing();
    const auto& primitives = drawing.Primitives();
    const auto time = std::find_if(primitives.begin(), primitives.end(),
                                   [](const Primitive& p) { return p.role == Role::kTimeSignature; });
    // The signs of the key are drawn before the time signature, that of the note behind it.
    const auto numbers = static_cast<std::size_t>(time - primitives.begin());
    const auto is_sign = [](const Primitive& p) {
      return p.role == Role::kSharp || p.role == Role::kFlat || p.role == Role::kNatural;
    };
    const QSizeF surface(staff.NotesLeft() + 2.0 * staff.LineGap(), 12.0 * staff.LineGap());
    const auto ink = [&](const std::function<bool(const Primitive&, std::size_t)>& wanted) {
      return InkOf(Selected(drawing, wanted), surface);
    };
    return {
        ink([&](const Primitive& p, std::size_t place) { return place < numbers && is_sign(p); }),
        ink([&](const Primitive&, std::size_t place) { return place == numbers; }),
        ink([&](const Primitive&, std::size_t place) { return place == numbers + 1; }),
        ink([&](const Primitive& p, std::size_t) {
          return p.role == Role::kNoteHead || p.role == Role::kStem;
        }),
        ink([&](const Primitive& p, std::size_t place) { return place > numbers && is_sign(p); }),
    };
  }

  ScriptedPlatform platform_;
  std::shared_ptr<Tune> tune_ = std::make_shared<Tune>();
  std::unique_ptr<TrackStaff> strip_;
};

TEST_P(StaffHead, TheTimeSignatureIsClearOfTheKeyAndOfTheFirstNote) {
  SetNote(kF5);
  for (const bool words : {false, true}) {
    ShowStrip(words);
    for (std::int16_t key = -7; key <= 7; ++key) {
      for (const Metre& metre : kMetres) {
        SCOPED_TRACE(testing::Message() << metre.beats << "/" << int{metre.length} << " key " << key
                                        << (words ? " with words" : ""));
        const CtlQuilStaff& staff = Draw(key, metre);
        const Head head = HeadOf(staff);
        ASSERT_FALSE(head.note.isNull());
        ASSERT_EQ(head.key.isNull(), key == 0);
        for (const QRectF& number : {head.beats, head.length}) {
          ASSERT_FALSE(number.isNull());
          EXPECT_GT(number.left(), head.key.right());
          EXPECT_LT(number.right(), head.note.left());
        }
      }
    }
  }
}

TEST_P(StaffHead, ANumberMakesWayForTheSignOfTheFirstNote) {
  ShowStrip(false);
  int signs = 0;
  for (const std::int16_t pitch : {kGSharp5, kB4, kF5}) {
    SetNote(pitch);
    for (std::int16_t key = -7; key <= 7; ++key) {
      for (const Metre& metre : kOneAndTwoDigits) {
        SCOPED_TRACE(testing::Message()
                     << metre.beats << "/" << int{metre.length} << " key " << key << " pitch " << pitch);
        const Head head = HeadOf(Draw(key, metre));
        signs += head.sign.isNull() ? 0 : 1;
        for (const QRectF& number : {head.beats, head.length}) {
          EXPECT_FALSE(number.intersects(head.sign));
          EXPECT_GT(number.left(), head.key.right());
        }
      }
    }
  }
  EXPECT_GT(signs, 0);
}

TEST_P(StaffHead, ANumberMakesWayForTheRestAtTheHeadOfTheBar) {
  // 16/16, whose numbers are wide, and rests of each shape.
  for (const double silence : {4.0, 2.0, 1.0, 0.5, 0.25}) {
    tune_->SetBeatLength(16);
    tune_->SetBeatsPerBar(16);
    tune_->Tones()->Clear();
    tune_->Tracks()->Item(1)->Rests()->Clear();
    tune_->Tracks()->Item(1)->Rests()->Add(silence, 1, 1, 0);
    tune_->SetTitle(QStringLiteral("Silence"));
    ShowStrip(false);
    strip_->SetShowRests(true);
    const CtlQuilStaff& staff = Draw(-2, {16, 16});
    const Drawing& drawing = staff.StaffDrawing();
    const QSizeF surface(staff.NotesLeft() + 2.0 * staff.LineGap(), 12.0 * staff.LineGap());
    const QRectF rest =
        InkOf(Selected(drawing,
                       [](const Primitive& p, std::size_t) {
                         return p.role >= Role::kWholeBarRest && p.role <= Role::kSemiquaverRest;
                       }),
              surface);
    ASSERT_FALSE(rest.isNull()) << silence;
    const Head head = HeadOf(staff);
    for (const QRectF& number : {head.beats, head.length}) {
      EXPECT_FALSE(number.intersects(rest)) << silence;
      EXPECT_GT(number.left(), head.key.right());
    }
  }
}

INSTANTIATE_TEST_SUITE_P(BarsAcross, StaffHead, ::testing::ValuesIn(kBarsAcross));

}  // namespace
}  // namespace zelmar
