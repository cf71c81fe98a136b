// The strip: how the row is built, which clef it takes, what it passes on and what it tells.
#include "notation/track_staff.h"

#include "model/globals.h"
#include "notation/staff_hand.h"

namespace zelmar {
namespace {

using namespace testing_support;

class TrackStaffTest : public ::testing::Test {
 protected:
  TrackStaffTest() : tune_(TuneOfBars(12)), strip_(std::make_unique<TrackStaff>(&window_)) {
    window_.resize(900, 400);
    strip_->resize(900, 100);
    window_.show();
  }

  void Load(int staves = 3, const char* clef = "Treble") {
    strip_->SetTune(tune_);
    strip_->SetBarsAcross(static_cast<std::int16_t>(staves));
    strip_->LoadBarsAcross(QLatin1String(clef));
  }

  void Add(int number, int track, EventType type = MUSIC_NOTE) {
    const auto tone = std::make_shared<Tone>();
    tone->SetNumber(static_cast<std::int16_t>(number));
    tone->SetTrack(static_cast<std::uint8_t>(track));
    tone->SetEventType(type);
    tone->SetAbsRef(tune_->LastAbsRef() + 1);
    tune_->Add(tone);
  }

  CtlQuilStaff& Item(int item) { return *strip_->MyStaff()[static_cast<std::size_t>(item)]; }
  QList<int> Bars() {
    QList<int> bars;
    for (const CtlQuilStaff* staff : strip_->MyStaff()) bars.append(staff->CurrentBar());
    return bars;
  }
  static int CountOf(const CtlQuilStaff& staff, Role role) {
    const auto& drawn = staff.StaffDrawing().Primitives();
    return static_cast<int>(
        std::count_if(drawn.begin(), drawn.end(), [role](const auto& p) { return p.role == role; }));
  }
  static int RestsOn(const CtlQuilStaff& staff) {
    int count = 0;
    for (const Role role : {Role::kWholeBarRest, Role::kMinimRest, Role::kCrotchetRest, Role::kQuaverRest,
                            Role::kSemiquaverRest})
      count += CountOf(staff, role);
    return count;
  }
  static QStringList Headings(const CtlQuilStaff& staff) {
    QStringList texts;
    for (const auto& drawn : staff.StaffDrawing().Primitives())
      if (drawn.role == Role::kHeading) texts.append(staff.StaffDrawing().TextOf(drawn));
    return texts;
  }

  ScriptedPlatform platform_;
  std::shared_ptr<Tune> tune_;
  QWidget window_;
  std::unique_ptr<TrackStaff> strip_;
};

TEST_F(TrackStaffTest, StandsAsItIsStored) {
  EXPECT_EQ(strip_->BarsAcross(), 3);
  EXPECT_FALSE(strip_->ShowWords());
  EXPECT_FALSE(strip_->ShowRests());
  EXPECT_TRUE(strip_->BeamingOn());
  EXPECT_TRUE(strip_->AllowEdits());
  EXPECT_FALSE(strip_->ShowDescription());
  EXPECT_TRUE(strip_->ShowTrack());
  EXPECT_EQ(strip_->MyStaff().size(), 1U);
}

TEST_F(TrackStaffTest, RowsOfEveryWidthShareTheRoomAndLieSideBySide) {
  for (int staves = 1; staves <= 12; ++staves) {
    Load(staves);
    ASSERT_EQ(strip_->MyStaff().size(), static_cast<std::size_t>(staves));
    EXPECT_EQ(strip_->height(), (1500 / staves + 1500) / 15) << staves;
    for (int item = 0; item < staves; ++item) {
      EXPECT_EQ(Item(item).geometry(), QRect(item * (900 / staves), 0, 900 / staves, strip_->height()));
      EXPECT_TRUE(Item(item).isVisible());
      EXPECT_EQ(Item(item).BarOffset(), item);
      EXPECT_EQ(Item(item).BarsAcross(), staves);
      EXPECT_EQ(Item(item).ShowClef(), item == 0);
      EXPECT_EQ(Item(item).CurrentBar(), item + 1);
      EXPECT_EQ(Item(item).objectName(), QStringLiteral("MyStaff(%1)").arg(item));
    }
    strip_->grab();
  }
}

TEST_F(TrackStaffTest, OneStaffHasTheWholeWidthAndIs3000High) {
  Load(1);
  EXPECT_EQ(Item(0).width(), 900);
  EXPECT_EQ(Item(0).height() * 15, 3000);
}

TEST_F(TrackStaffTest, ANarrowerRowLetsStavesGo) {
  Load(5);
  Load(2);
  EXPECT_EQ(strip_->findChildren<CtlQuilStaff*>(QRegularExpression(QStringLiteral("^MyStaff"))).size(), 2);
  LetClosedWindowsGo();
  EXPECT_EQ(strip_->findChildren<CtlQuilStaff*>().size(), 2);
}

TEST_F(TrackStaffTest, TheRowGrowsWithItsWindow) {
  Load(3);
  strip_->resize(1200, strip_->height());
  EXPECT_EQ(Item(2).geometry().x(), 800);
  EXPECT_EQ(Item(2).width(), 400);
  QCoreApplication::processEvents();
  EXPECT_FLOAT_EQ(Item(2).StaffWidth(), 6000.0F);
}

TEST_F(TrackStaffTest, RefreshShowsABarAndItsSuccessors) {
  Load(3);
  strip_->RefreshAllStaffs(7);
  EXPECT_EQ(Bars(), QList<int>({7, 8, 9}));
  EXPECT_EQ(strip_->LeftMostbar(), 7);
  for (int item = 0; item < 3; ++item) EXPECT_EQ(CountOf(Item(item), Role::kNoteHead), 4);
  strip_->RefreshAllStaffs(11);
  EXPECT_EQ(CountOf(Item(1), Role::kNoteHead), 4);
  EXPECT_EQ(CountOf(Item(2), Role::kNoteHead), 0);
}

TEST_F(TrackStaffTest, HeadingsTellTheTitleOnceAndTheBarsOfTheOthers) {
  Load(3);
  EXPECT_TRUE(Headings(Item(0)).join(QString()).contains(QStringLiteral("A Title")));
  EXPECT_EQ(Headings(Item(1)), QStringList(QStringLiteral("2")));
  EXPECT_EQ(Headings(Item(2)), QStringList(QStringLiteral("3")));
}

// --- The clef ---

struct ClefRow {
  int low, high;
  const char* clef;
};

TEST_F(TrackStaffTest, TheBestClefSuitsTheNotesOfTheTrack) {
  const ClefRow rows[] = {{58, 80, "Treble"}, {60, 62, "Treble"}, {57, 62, "Bass"},  {40, 55, "Bass"},
                          {57, 63, "Bass"},   {57, 64, "Treble"}, {50, 70, "Bass"},  {50, 71, "Treble"},
                          {36, 84, "Bass"},   {36, 85, "Treble"}, {59, 59, "Treble"}};
  for (const ClefRow& row : rows) {
    tune_ = std::make_shared<Tune>();
    tune_->Tracks()->Add({}, 2, 2, 0, false, 0, 0, QStringLiteral("2"));
    Add(row.low, 1);
    Add(row.high, 1);
    Add(20, 2);  // another track has no say
    Load(2, "Best");
    EXPECT_EQ(Item(0).Clef(), QLatin1String(row.clef)) << row.low << " " << row.high;
    EXPECT_EQ(Item(1).Clef(), QLatin1String(row.clef));
  }
}

TEST_F(TrackStaffTest, EveryEventOfTheTrackCountsForTheBestClef) {
  tune_ = std::make_shared<Tune>();
  Add(70, 1);
  Add(40, 1, 7);
  Load(1, "Best");
  EXPECT_EQ(Item(0).Clef(), QStringLiteral("Bass"));
}

TEST_F(TrackStaffTest, ATrackWithoutEventsStandsInTheTreble) {
  tune_ = std::make_shared<Tune>();
  Load(2, "Best");
  EXPECT_EQ(Item(1).Clef(), QStringLiteral("Treble"));
}

TEST_F(TrackStaffTest, APressOnTheClefIsToldAndTurnsTheWholeRow) {
  Load(3);
  strip_->RefreshAllStaffs(4);
  QSignalSpy changed(strip_.get(), &TrackStaff::ClefChanged);
  QTest::mouseClick(Item(0).picBox(), Qt::LeftButton, {}, QPoint(10, 70));
  EXPECT_EQ(changed.count(), 1);
  for (int item = 0; item < 3; ++item) EXPECT_EQ(Item(item).Clef(), QStringLiteral("Bass"));
  EXPECT_EQ(Bars(), QList<int>({4, 5, 6}));
}

// --- What is passed on ---

TEST_F(TrackStaffTest, MembersReachEveryStaff) {
  tune_->Tracks()->Add({}, 2, 2, 0, false, 0, 0, QStringLiteral("2"));
  Global().HelpPath = QStringLiteral("C:\\Help");
  strip_->SetTrackNumber(2);
  strip_->SetShowRests(true);
  strip_->SetBeamingOn(false);
  strip_->SetAllowEdits(false);
  strip_->SetShowBeatLines(true);
  strip_->SetSaveDurations(true);
  strip_->SetAlignBoundaries(true);
  strip_->SetShowDescription(true);
  strip_->SetNoteColour1(3);
  strip_->SetNoteColour2(5);
  Load(2);
  for (int item = 0; item < 2; ++item) {
    EXPECT_EQ(Item(item).SelectedTrack(), 2);
    EXPECT_TRUE(Item(item).ShowRests());
    EXPECT_FALSE(Item(item).BeamingOn());
    EXPECT_FALSE(Item(item).AllowEdits());
    EXPECT_TRUE(Item(item).ShowBeatLines());
    EXPECT_TRUE(Item(item).SaveDurations());
    EXPECT_TRUE(Item(item).AlignBoundaries());
    EXPECT_TRUE(Item(item).ShowBeatMarker());
    EXPECT_EQ(Item(item).NoteColour1(), 3);
    EXPECT_EQ(Item(item).NoteColour2(), 5);
    EXPECT_EQ(Item(item).HelpPath(), QStringLiteral("C:\\Help"));
    EXPECT_EQ(Item(item).ShowTuneDescription(), item == 0);
    EXPECT_EQ(Item(item).ShowTrack(), item == 0);
    EXPECT_EQ(Item(item).ThisTune(), tune_);
  }
  strip_->SetAllowEdits(true);
  strip_->RefreshAllStaffs(1);
  EXPECT_TRUE(Item(1).AllowEdits());
}

TEST_F(TrackStaffTest, WordsAreShownOnlyWhereTheTuneHasSome) {
  strip_->SetShowWords(true);
  Load(2);
  EXPECT_FALSE(Item(0).ShowWords());
  EXPECT_FALSE(Item(1).picWords()->isVisible());
  tune_->Words()->Add(0, 1, 2, QStringLiteral("la"));
  Load(2);
  EXPECT_TRUE(Item(0).picWords()->isVisible());
  EXPECT_TRUE(Item(1).picWords()->isVisible());
  const auto& words = Item(1).WordsDrawing();
  ASSERT_EQ(words.Primitives().size(), 1U);
  EXPECT_EQ(words.TextOf(words.Primitives()[0]), QStringLiteral("la"));
  strip_->SetShowWords(false);
  strip_->RefreshAllStaffs(1);
  EXPECT_FALSE(Item(1).picWords()->isVisible());
}

TEST_F(TrackStaffTest, RestsAreShownAndHidden) {
  const auto& rests = tune_->Tracks()->Item(1)->Rests();
  rests->Add(1.0, 1, 2, 0);
  rests->Add(1.0, 2, 3, 0);
  Load(3);
  for (int item = 0; item < 3; ++item) EXPECT_EQ(RestsOn(Item(item)), 0);
  strip_->SetShowRests(true);
  strip_->RefreshAllStaffs(1);
  EXPECT_GT(RestsOn(Item(0)), 0);
  EXPECT_GT(RestsOn(Item(1)), 0);
  EXPECT_EQ(RestsOn(Item(2)), 0);
  QCoreApplication::processEvents();
  EXPECT_GT(RestsOn(Item(0)), 0);
  strip_->SetShowRests(false);
  strip_->RefreshAllStaffs(1);
  EXPECT_EQ(RestsOn(Item(0)), 0);
}

TEST_F(TrackStaffTest, ATuneWithoutATitleShowsNoRests) {
  tune_->SetTitle(QStringLiteral("No Title Yet"));
  tune_->Tracks()->Item(1)->Rests()->Add(1.0, 1, 2, 0);
  strip_->SetShowRests(true);
  Load(1);
  EXPECT_EQ(RestsOn(Item(0)), 0);
  QCoreApplication::processEvents();
  EXPECT_EQ(RestsOn(Item(0)), 0);
  strip_->DisplayRests();
  EXPECT_GT(RestsOn(Item(0)), 0);
}

TEST_F(TrackStaffTest, PerformAlignSnapsTheNotesOfTheTrack) {
  tune_->Tracks()->Add({}, 2, 2, 0, false, 0, 0, QStringLiteral("2"));
  const auto other = std::make_shared<Tone>();
  other->SetTrack(2);
  other->SetDuration(0.95);
  other->SetAbsRef(tune_->LastAbsRef() + 1);
  tune_->Add(other);
  const auto note = tune_->Item(1);
  note->SetDuration(0.95);
  note->SetTick(7);
  strip_->SetSaveDurations(true);
  strip_->SetAlignBoundaries(true);
  Load(3);
  strip_->PerformAlign();
  EXPECT_DOUBLE_EQ(note->Duration(), 1.0);
  EXPECT_EQ(note->Tick(), 0);
  EXPECT_DOUBLE_EQ(other->Duration(), 0.95);
}

// --- Events ---

TEST_F(TrackStaffTest, TheAreasAndNewNotesAreTold) {
  Load(3);
  QStringList told;
  QObject::connect(strip_.get(), &TrackStaff::ChangeRequested, strip_.get(),
                   [&] { told.append(QStringLiteral("change")); });
  QObject::connect(strip_.get(), &TrackStaff::FocusRequested, strip_.get(),
                   [&] { told.append(QStringLiteral("focus")); });
  QObject::connect(strip_.get(), &TrackStaff::TuneChanged, strip_.get(),
                   [&](std::int16_t bar) { told.append(QStringLiteral("tune %1").arg(bar)); });
  QTest::mouseClick(Item(0).picBox(), Qt::LeftButton, {}, QPoint(35, 70));
  QTest::mouseClick(Item(0).picBox(), Qt::LeftButton, {}, QPoint(5, 5));
  QTest::mouseClick(Item(1).picBox(), Qt::LeftButton, {}, QPoint(150, 61));
  EXPECT_EQ(told, QStringList({QStringLiteral("change"), QStringLiteral("focus"), QStringLiteral("tune 2")}));
}

TEST_F(TrackStaffTest, ADeletedNoteRefreshesTheRowFromItsFirstBar) {
  Load(3);
  strip_->RefreshAllStaffs(4);
  KeptNoteDialogue dialogue;
  ASSERT_EQ(tune_->BarCount(), 12);
  const QPointF place(Item(1).NotesLeft() / 15, (8.5 + 0.5) * static_cast<double>(Item(1).LineGap()) / 15);
  QTest::mouseClick(Item(1).picBox(), Qt::RightButton, Qt::ControlModifier, place.toPoint());
  EXPECT_EQ(CountOf(Item(1), Role::kNoteHead), 3);
  EXPECT_EQ(Bars(), QList<int>({4, 5, 6}));
}

TEST_F(TrackStaffTest, TabGoesAlongTheRow) {
  Load(3);
  window_.activateWindow();
  QCoreApplication::processEvents();
  Item(0).setFocus(Qt::TabFocusReason);
  for (int item = 0; item < 3; ++item) {
    EXPECT_TRUE(Item(item).hasFocus()) << item;
    QTest::keyClick(&Item(item), Qt::Key_Tab);
  }
}

TEST_F(TrackStaffTest, AListenerMayRebuildTheRowOrCloseTheWindow) {
  Load(3);
  QObject::connect(strip_.get(), &TrackStaff::ClefChanged, strip_.get(), [this] { Load(2); });
  QTest::mouseClick(Item(0).picBox(), Qt::LeftButton, {}, QPoint(10, 70));
  EXPECT_EQ(strip_->MyStaff().size(), 2U);
  QObject::connect(strip_.get(), &TrackStaff::FocusRequested, strip_.get(),
                   [this] { strip_.release()->deleteLater(); });
  QTest::mouseClick(Item(0).picBox(), Qt::LeftButton, {}, QPoint(5, 5));
  LetClosedWindowsGo();
  EXPECT_EQ(strip_, nullptr);
}

// --- Bad input ---

TEST_F(TrackStaffTest, WithoutATuneTheRowStaysAsItIs) {
  strip_->SetBarsAcross(4);
  strip_->LoadBarsAcross(QStringLiteral("Best"));
  strip_->RefreshAllStaffs(3);
  strip_->DisplayRests();
  strip_->PerformAlign();
  EXPECT_EQ(strip_->MyStaff().size(), 1U);
  EXPECT_EQ(strip_->LeftMostbar(), 1);
  strip_->grab();
}

TEST_F(TrackStaffTest, ATuneThatIsTakenAwayIsNoLongerFollowed) {
  Load(1);
  strip_->SetTune(nullptr);
  tune_->SetBarNumber(5);
  tune_->SetBeatWithinBar(1);
  Q_EMIT tune_->Ticked();
  EXPECT_EQ(strip_->LeftMostbar(), 1);
}

TEST_F(TrackStaffTest, TracksThatDoNotExistShowTheLastOneThatDoes) {
  for (const int number : {7, 255, 256, -1, 30000}) {
    strip_->SetTrackNumber(static_cast<std::int16_t>(number));
    Load(2, "Best");
    EXPECT_EQ(Item(0).SelectedTrack(), 1) << number;
    EXPECT_EQ(CountOf(Item(0), Role::kNoteHead), 4) << number;
    EXPECT_EQ(Item(0).Clef(), QStringLiteral("Treble"));
  }
}

TEST_F(TrackStaffTest, TunesWithoutTracksOrMeasureAreNoHarm) {
  tune_->Tracks()->Clear();
  Load(3, "Best");
  strip_->PerformAlign();
  strip_->DisplayRests();
  tune_->SetBeatLength(0);
  Load(3, "Best");
  tune_->SetBeatsPerBar(0);
  Load(3, "Best");
  tune_->SetTones(std::make_shared<Tones>());
  Load(3, "Best");
  strip_->grab();
  EXPECT_EQ(strip_->MyStaff().size(), 3U);
}

TEST_F(TrackStaffTest, RowsOfNoStavesAndOfNoSizeAreNoHarm) {
  Load(0);
  EXPECT_EQ(strip_->MyStaff().size(), 1U);
  Load(-4);
  EXPECT_EQ(strip_->MyStaff().size(), 1U);
  strip_->setMinimumSize(0, 0);
  strip_->resize(0, 0);
  Load(5);
  QCoreApplication::processEvents();
  strip_->resize(3, 3);
  QCoreApplication::processEvents();
  EXPECT_EQ(Item(4).width(), 0);
}

TEST_F(TrackStaffTest, ABarBeyondTheLastNumberIsAFailureAndNoCrash) {
  Load(3);
  EXPECT_THROW(strip_->RefreshAllStaffs(32767), OverflowError);
  strip_->RefreshAllStaffs(-5);
  EXPECT_EQ(Bars(), QList<int>({-5, -4, -3}));
}

}  // namespace
}  // namespace zelmar
