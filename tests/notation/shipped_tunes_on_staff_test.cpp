// Every note of every tune that ships is seen: it has a head on the staff that a window draws of its track.
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>

#include "notation/staff_steps.h"
#include "notation/track_staff.h"
#include "store/tune_loader.h"
#include "support/scripted_services.h"
#include "support/template_database.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class ShippedTunesOnStaff : public ::testing::Test {
 protected:
  QStringList CodeNames() const {
    QStringList names;
    {
      auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("staff"));
      database.setDatabaseName(library_.Path());
      EXPECT_TRUE(database.open());
      QSqlQuery query(database);
      EXPECT_TRUE(query.exec(QStringLiteral("SELECT CodeName FROM tblMelodies ORDER BY CodeName")));
      while (query.next()) names.append(query.value(0).toString());
    }
    QSqlDatabase::removeDatabase(QStringLiteral("staff"));
    return names;
  }

  static std::shared_ptr<Tune> Load(QString name) {
    auto tune = std::make_shared<Tune>();
    TuneLoader().DoLoad(name, tune);
    return tune;
  }

  // The notes of a bar that have no head of their own at their place, as text.
  static QStringList Unseen(const CtlQuilStaff& staff, const Tune& tune, std::int16_t bar) {
    QList<QPointF> heads;
    for (const Primitive& primitive : staff.StaffDrawing().Primitives())
      if (primitive.role == Role::kNoteHead) heads.append(primitive.from);
    const ClefKind clef = ClefKindOf(staff.Clef());
    const double gap = staff.LineGap();
    QStringList unseen;
    for (const auto& tone : tune) {
      if (tone->EventType() != MUSIC_NOTE || tone->Bar() != bar || tone->Track() != staff.SelectedTrack())
        continue;
      const auto step = StepOfPitch(clef, tone->Number());
      const int moved = tone->EnHarmonic() == u"#" ? -1 : tone->EnHarmonic() == u"b" ? 1 : 0;
      const auto head = std::find_if(heads.begin(), heads.end(), [&](const QPointF& place) {
        // The second of two neighbours stands beside the stem.
        return step && std::abs(place.y() - staff.YOfStep(*step + moved)) < gap / 4 &&
               std::abs(place.x() - staff.XOf(tone->Beat(), tone->Tick())) < 1.1 * gap;
      });
      if (head == heads.end())
        unseen.append(QStringLiteral("bar %1: %2").arg(bar).arg(tone->EnharmonicName()));
      else
        heads.erase(head);
    }
    return unseen;
  }

  ScriptedPlatform platform_;
  TemplateDatabase library_{QStringLiteral(ZELMAR_BUILD_DIRECTORY "/ZelmarTemplate.mdb")};
  QWidget window_;
};

TEST_F(ShippedTunesOnStaff, EveryNoteOfEveryTrackHasItsHead) {
  window_.resize(1000, 400);
  window_.show();
  const QStringList names = CodeNames();
  ASSERT_GE(names.size(), 24);
  for (const QString& name : names) {
    const auto tune = Load(name);
    ASSERT_GT(tune->Count(), 0) << name.toStdString();
    for (const auto& track : *tune->Tracks()) {
      TrackStaff strip(&window_);
      strip.resize(1000, 100);
      strip.SetTune(tune);
      strip.SetTrackNumber(track->TrackNumber());
      strip.SetBarsAcross(1);
      strip.LoadBarsAcross(QStringLiteral("Best"));
      QStringList unseen;
      for (std::int16_t bar = 1; bar <= tune->BarCount(); ++bar) {
        strip.RefreshAllStaffs(bar);
        unseen += Unseen(*strip.MyStaff().front(), *tune, bar);
      }
      EXPECT_EQ(unseen.join(QStringLiteral(", ")).toStdString(), "")
          << name.toStdString() << ", track " << int{track->TrackNumber()} << ", "
          << strip.MyStaff().front()->Clef().toStdString();
    }
  }
}

TEST_F(ShippedTunesOnStaff, ANoteThatLeavesTheStaffIsFoundOut) {
  const auto tune = std::make_shared<Tune>();
  for (const int number : {72, 40}) {
    auto tone = std::make_shared<Tone>();
    tone->SetNumber(static_cast<std::int16_t>(number));
    tone->SetAbsRef(tune->LastAbsRef() + 1);
    tune->Add(tone);
  }
  TrackStaff strip(&window_);
  strip.resize(1000, 100);
  strip.SetTune(tune);
  strip.SetTrackNumber(1);
  strip.SetBarsAcross(1);
  strip.LoadBarsAcross(QStringLiteral("Treble"));
  EXPECT_EQ(Unseen(*strip.MyStaff().front(), *tune, 1), QStringList(QStringLiteral("bar 1: E2")));
}

}  // namespace
}  // namespace zelmar
