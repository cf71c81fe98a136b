// The staff control: its properties, its surfaces, what it takes over from a tune, and when it draws.
#include "notation/ctl_quil_staff.h"

#include <QMetaMethod>
#include <QPointer>
#include <QSignalSpy>

#include "notation/note_dialogue.h"
#include "platform/failure.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class StaffControl : public ::testing::Test {
 protected:
  StaffControl() : staff_(std::make_unique<CtlQuilStaff>()) {
    staff_->resize(400, 80);
    staff_->SetShowClef(false);
  }

  std::size_t CountOf(Role role) const {
    const auto& primitives = staff_->StaffDrawing().Primitives();
    return static_cast<std::size_t>(std::count_if(primitives.begin(), primitives.end(),
                                                  [role](const Primitive& p) { return p.role == role; }));
  }

  // More notes at one time than a chord may have: a box tells of it as the bar is drawn.
  static std::shared_ptr<Tune> ChordThatIsToldOf() {
    auto tune = std::make_shared<Tune>();
    tune->CreateMelody(0, 100, 1, QStringList(25, QStringLiteral("C4")));
    for (const auto& tone : *tune) {
      tone->SetBar(1);
      tone->SetBeat(1);
    }
    return tune;
  }

  ScriptedPlatform platform_;
  std::unique_ptr<CtlQuilStaff> staff_;
};

TEST_F(StaffControl, PropertiesStartAtTheirDefaults) {
  const CtlQuilStaff staff;
  EXPECT_TRUE(staff.ShowClef());
  EXPECT_TRUE(staff.ShowTime());
  EXPECT_TRUE(staff.ShowTitle());
  EXPECT_FALSE(staff.ShowWords());
  EXPECT_EQ(staff.ForeColor(), 0x80000012U);
  EXPECT_EQ(staff.BarOffset(), 0);
  EXPECT_EQ(staff.BarsAcross(), 1);
  EXPECT_TRUE(staff.ShowBeatMarker());
  EXPECT_FALSE(staff.ShowBeatLines());
  EXPECT_EQ(staff.CurrentBar(), 1);
  EXPECT_TRUE(staff.BeamingOn());
  EXPECT_TRUE(staff.AllowEdits());
  EXPECT_TRUE(staff.ShowTuneDescription());
  EXPECT_EQ(staff.MiddleLedgerLines(), 2);
  EXPECT_EQ(staff.Clef(), QStringLiteral("Treble"));
  EXPECT_FALSE(staff.ShowRests());
  EXPECT_FALSE(staff.SaveDurations());
  EXPECT_FALSE(staff.AlignBoundaries());
  EXPECT_EQ(staff.NoteColour1(), 0);
  EXPECT_EQ(staff.NoteColour2(), 0);
  EXPECT_TRUE(staff.DataBasePath().isEmpty());
  EXPECT_TRUE(staff.HelpPath().isEmpty());
  EXPECT_TRUE(staff.GraphicsPath().isEmpty());
}

TEST_F(StaffControl, SignalsAreDeclaredInTheirOrder) {
  QStringList names;
  const QMetaObject& meta = CtlQuilStaff::staticMetaObject;
  for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    if (meta.method(i).methodType() == QMetaMethod::Signal)
      names.append(QString::fromLatin1(meta.method(i).name()));
  EXPECT_EQ(names, (QStringList{QStringLiteral("ChangedBarNumbers"), QStringLiteral("ClickedTopCorner"),
                                QStringLiteral("ClickedClef"), QStringLiteral("ClickedSignature"),
                                QStringLiteral("NoteAdded")}));
}

// --- Surfaces ---

TEST_F(StaffControl, TheStaffFillsTheControlButForTheWords) {
  staff_->Setup(TuneOfBars(2));
  staff_->RePaint();
  EXPECT_EQ(Find<QWidget>(*staff_, "picBox").geometry(), QRect(0, 0, 400, 80));
  EXPECT_TRUE(Find<QWidget>(*staff_, "picWords").isHidden());
  EXPECT_FLOAT_EQ(staff_->LineGap(), 100.0F) << "1200 twips";
  EXPECT_FLOAT_EQ(staff_->StaffWidth(), 6000.0F);

  staff_->SetShowWords(true);
  staff_->RePaint();
  const QRect words = Find<QWidget>(*staff_, "picWords").geometry();
  EXPECT_FALSE(Find<QWidget>(*staff_, "picWords").isHidden());
  EXPECT_EQ(words.width(), 400);
  EXPECT_EQ(words.bottom(), 79);
  EXPECT_EQ(Find<QWidget>(*staff_, "picBox").geometry(), QRect(0, 0, 400, 80 - words.height()));
  EXPECT_FLOAT_EQ(staff_->LineGap(), static_cast<float>((80 - words.height()) * 15) / 12.0F);
}

TEST_F(StaffControl, ANewSizeIsDrawnWhenTheQueueIsServed) {
  staff_->Setup(TuneOfBars(2));
  staff_->show();
  QCoreApplication::processEvents();
  staff_->resize(800, 160);
  QCoreApplication::processEvents();
  EXPECT_FLOAT_EQ(staff_->LineGap(), 200.0F);
  EXPECT_EQ(CountOf(Role::kNoteHead), 4U);
  EXPECT_NEAR(staff_->StaffDrawing().Primitives().front().to.x(), 12000.0, 1.0);
}

TEST_F(StaffControl, AControlOfNoSizeHarmsNothing) {
  staff_->SetShowWords(true);
  staff_->SetShowRests(true);
  staff_->SetShowBeatLines(true);
  staff_->Setup(TuneOfBars(2));
  for (const QSize size : {QSize(0, 0), QSize(1, 1), QSize(400, 0), QSize(0, 80), QSize(3, 10)}) {
    staff_->resize(size);
    staff_->RePaint();
    EXPECT_TRUE(staff_->grab().size() == size || size.isEmpty());
  }
}

TEST_F(StaffControl, ItIsPaintedOnPaperWithItsNotes) {
  staff_->Setup(TuneOfBars(1));
  staff_->RePaint();
  const QImage image = staff_->grab().toImage();
  EXPECT_EQ(image.pixelColor(200, 75), QColor(Qt::white));
  const float x = staff_->XOf(1, 0) / 15.0F;
  const float y = staff_->YOfStep(-1) / 15.0F;
  EXPECT_LT(image.pixelColor(static_cast<int>(x), static_cast<int>(y)).lightness(), 50);
}

TEST_F(StaffControl, ALightThemeColourIsDrawnInBlackOnThePaper) {
  for (const auto& [text, ink] :
       {std::pair(QColor(0x20, 0x30, 0x40), InkColour{0x403020}), std::pair(QColor(Qt::white), kBlackInk)}) {
    QPalette palette = staff_->palette();
    palette.setColor(QPalette::ButtonText, text);
    staff_->setPalette(palette);
    staff_->RePaint();
    EXPECT_EQ(staff_->StaffDrawing().Primitives().front().colour, ink);
  }
}

// --- Setup ---

TEST_F(StaffControl, ATrackThatTheTuneLacksGivesWayToItsLast) {
  auto tune = TuneOfBars(2);  // two tracks, both numbered 1
  tune->Tracks()->Add(QStringLiteral("Three"), 3, 1, 0, false, 0, 0);
  tune->Tracks()->Add(QStringLiteral("Two"), 2, 1, 0, false, 0, 0);
  for (const auto& [chosen, kept] : {std::pair(1, 1), std::pair(3, 3), std::pair(9, 2), std::pair(0, 2)}) {
    staff_->SetSelectedTrack(static_cast<std::uint8_t>(chosen));
    staff_->Setup(tune);
    EXPECT_EQ(staff_->SelectedTrack(), kept);
  }
}

TEST_F(StaffControl, TheMeasureOfTheTuneIsTakenOver) {
  struct Row {
    std::int16_t beats;
    std::uint8_t length;
    std::int16_t pulses;
  };
  for (const Row& row : {Row{4, 4, 120}, Row{6, 8, 60}, Row{2, 2, 240}, Row{3, 16, 30}, Row{5, 7, 69}}) {
    auto tune = TuneOfBars(3);
    tune->SetBeatsPerBar(row.beats);
    tune->SetBeatLength(row.length);
    staff_->Setup(tune);
    EXPECT_EQ(staff_->BeatsPerBar(), row.beats);
    EXPECT_EQ(staff_->TicksPerBeat(), row.pulses);
    EXPECT_EQ(staff_->BarCount(), tune->BarCount());
    ASSERT_EQ(staff_->GuideLine().size(), static_cast<std::size_t>(row.beats));
    EXPECT_EQ(staff_->findChildren<StaffItem*>(QStringLiteral("GuideLine")).size(), row.beats);
  }
}

TEST_F(StaffControl, ABeatOfNoLengthOrABarOfNoBeatsIsBorne) {
  auto tune = TuneOfBars(2);
  tune->SetBeatsPerBar(0);
  tune->SetBeatLength(0);
  staff_->SetShowBeatLines(true);
  staff_->Setup(tune);
  staff_->RePaint();
  EXPECT_EQ(staff_->TicksPerBeat(), 120);
  EXPECT_EQ(staff_->GuideLine().size(), 1U);
  EXPECT_GT(CountOf(Role::kNoteHead), 0U);
}

TEST_F(StaffControl, WithoutATuneItIsAnEmptyStaff) {
  staff_->SetShowRests(true);
  staff_->SetShowWords(true);
  staff_->SetShowBeatLines(true);
  staff_->RePaint();
  staff_->PerformAlign();
  EXPECT_EQ(CountOf(Role::kStaffLine), 5U);
  staff_->Setup(TuneOfBars(2));
  staff_->RePaint();
  EXPECT_EQ(CountOf(Role::kNoteHead), 4U);
  staff_->Setup(nullptr);
  staff_->RePaint();
  EXPECT_EQ(CountOf(Role::kNoteHead), 0U);
  EXPECT_EQ(staff_->BarCount(), 0);
}

TEST_F(StaffControl, ATuneWithoutTracksKeepsTheTrackChosen) {
  auto tune = TuneOfBars(1);
  tune->SetTracks(std::make_shared<Tracks>());
  staff_->SetSelectedTrack(1);
  staff_->SetShowRests(true);
  staff_->Setup(tune);
  staff_->RePaint();
  EXPECT_EQ(staff_->SelectedTrack(), 1);
  EXPECT_EQ(CountOf(Role::kNoteHead), 4U);
}

TEST_F(StaffControl, SetupShowsTheTuneOnceTheQueueIsServed) {
  staff_->Setup(TuneOfBars(2));
  EXPECT_EQ(CountOf(Role::kNoteHead), 0U);
  QCoreApplication::processEvents();
  EXPECT_EQ(CountOf(Role::kNoteHead), 4U);
}

TEST_F(StaffControl, TheBarOnShowIsThatOfCurrentBarInItsColours) {
  staff_->Setup(TuneOfBars(2));
  staff_->SetCurrentBar(2);
  const auto index = [this] {
    for (std::int32_t i = 1; i <= staff_->ThisTune()->Count(); ++i)
      if (staff_->ThisTune()->Item(i)->Bar() == 2 && staff_->ThisTune()->Item(i)->EventType() == MUSIC_NOTE)
        return i;
    return 0;
  }();
  staff_->SetNoteColour1(index);
  staff_->RePaint();
  ASSERT_EQ(CountOf(Role::kNoteHead), 4U);
  const auto& primitives = staff_->StaffDrawing().Primitives();
  EXPECT_EQ(
      std::count_if(primitives.begin(), primitives.end(),
                    [](const Primitive& p) { return p.role == Role::kNoteHead && p.colour == kRedInk; }),
      1);
}

TEST_F(StaffControl, RestsAreDrawnWhereTheyAreWanted) {
  auto tune = TuneOfBars(2);
  tune->Tracks()->Item(1)->Rests()->Add(1.0, 1, 1, 0);
  staff_->Setup(tune);
  staff_->RePaint();
  EXPECT_EQ(CountOf(Role::kCrotchetRest), 0U);
  staff_->SetShowRests(true);
  staff_->RePaint();
  EXPECT_EQ(CountOf(Role::kCrotchetRest), 1U);
}

// --- Items ---

TEST_F(StaffControl, GuideLinesStandAtTheBeats) {
  auto tune = TuneOfBars(2);
  staff_->Setup(tune);
  staff_->RePaint();
  for (const StaffItem* line : staff_->GuideLine()) EXPECT_TRUE(line->isHidden());
  staff_->SetShowBeatLines(true);
  staff_->RePaint();
  ASSERT_EQ(staff_->GuideLine().size(), 4U);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_FALSE(staff_->GuideLine()[i]->isHidden());
    EXPECT_NEAR(staff_->GuideLine()[i]->Place().left(), staff_->XOf(static_cast<std::int16_t>(i + 1), 0),
                1.0);
  }
  staff_->ClearStaff();
  for (const StaffItem* line : staff_->GuideLine()) EXPECT_TRUE(line->isHidden());
}

TEST_F(StaffControl, ClearingHidesTheBeatMarker) {
  staff_->Setup(TuneOfBars(1));
  staff_->BeatMarker()->SetPlace({100, 100, 200, 200});
  staff_->BeatMarker()->show();
  staff_->ClearStaff();
  EXPECT_TRUE(staff_->BeatMarker()->isHidden());
  EXPECT_TRUE(staff_->StaffDrawing().Primitives().empty());
}

TEST_F(StaffControl, AnItemStandsInItsPlaceAndLetsPressesThrough) {
  StaffItem* marker = staff_->BeatMarker();
  EXPECT_EQ(marker->objectName(), QStringLiteral("BeatMarker"));
  EXPECT_EQ(marker->parentWidget(), staff_->picBox());
  marker->SetPlace({150, 300, 600, 450});
  EXPECT_EQ(marker->geometry(), QRect(10, 20, 40, 30));
  EXPECT_EQ(marker->Place(), QRectF(150, 300, 600, 450));
  EXPECT_TRUE(marker->testAttribute(Qt::WA_TransparentForMouseEvents));
}

// --- Alignment ---

TEST_F(StaffControl, AligningSnapsTheNotesOfItsTrack) {
  auto tune = TuneOfBars(1);
  const auto first = tune->Item(QStringLiteral("1"));
  const auto other = tune->Item(QStringLiteral("3"));
  first->SetDuration(1.1);
  first->SetTick(10);
  other->SetDuration(1.1);
  other->SetTrack(2);
  staff_->SetSaveDurations(true);
  staff_->SetAlignBoundaries(true);
  staff_->Setup(tune);
  tune->SetChangedSinceLastSaved(false);
  staff_->PerformAlign();
  EXPECT_EQ(first->Duration(), 1.0);
  EXPECT_EQ(first->Tick(), 0);
  EXPECT_EQ(other->Duration(), 1.1);
  EXPECT_TRUE(tune->ChangedSinceLastSaved());
  QCoreApplication::processEvents();
  EXPECT_EQ(CountOf(Role::kNoteHead), 3U);
}

TEST_F(StaffControl, ANoteThatAligningMovesIsFoundInItsNewBar) {
  auto tune = TuneOfBars(3);
  for (int note = 4; note <= 4; ++note) tune->Item(QStringLiteral("7"))->SetDuration(4.2);
  staff_->SetAlignBoundaries(true);
  staff_->Setup(tune);
  staff_->PerformAlign();
  staff_->SetCurrentBar(2);
  staff_->RePaint();
  EXPECT_EQ(CountOf(Role::kNoteHead), 5U);
  for (qsizetype i = 2; i <= tune->Count(); ++i) EXPECT_GE(tune->Item(i)->Bar(), tune->Item(i - 1)->Bar());
}

TEST_F(StaffControl, AligningNothingChangesNothing) {
  auto tune = TuneOfBars(1);
  tune->Item(QStringLiteral("1"))->SetDuration(1.1);
  staff_->Setup(tune);
  tune->SetChangedSinceLastSaved(false);
  staff_->PerformAlign();
  EXPECT_EQ(tune->Item(QStringLiteral("1"))->Duration(), 1.1);
  EXPECT_FALSE(tune->ChangedSinceLastSaved());
}

// --- Messages and closing ---

class LargeChords : public StaffControl {
 protected:
  LargeChords() { StartTune(); }

  void StartTune() {
    tune_ = std::make_shared<Tune>();
    last_ref_ = 0;
  }
  void AddChord(std::int16_t beat, std::int16_t bar = 1, std::uint8_t track = 1, int notes = 21) {
    for (int i = 0; i < notes; ++i) {
      auto tone = std::make_shared<Tone>();
      tone->SetAbsRef(++last_ref_);
      tone->SetNumber(static_cast<std::int16_t>(60 + i));
      tone->SetBar(bar);
      tone->SetBeat(beat);
      tone->SetTrack(track);
      tune_->Add(tone);
    }
  }
  void Show(std::int16_t bar = 1) {
    staff_->Setup(tune_);
    staff_->SetCurrentBar(bar);
    staff_->RePaint();
  }
  qsizetype Messages() const { return platform_.messages->shown.size(); }

  std::shared_ptr<Tune> tune_;
  std::int32_t last_ref_ = 0;
};

TEST_F(LargeChords, AreToldOfInTheSystemsWords) {
  AddChord(1);
  Show();
  ASSERT_EQ(Messages(), 1);
  EXPECT_EQ(platform_.messages->shown[0].icon, MessageIcon::kCritical);
  EXPECT_EQ(platform_.messages->shown[0].text, QStringLiteral("More than 20 notes in this chord"));
  EXPECT_EQ(platform_.messages->shown[0].title, QStringLiteral("Not supported"));
}

TEST_F(LargeChords, AreToldOfOnceHoweverOftenTheyAreDrawn) {
  AddChord(1);
  AddChord(3);
  AddChord(1, 2);
  for (int round = 0; round < 3; ++round) {
    Show(1);
    EXPECT_EQ(Messages(), round == 0 ? 2 : 3);
    Show(2);
    EXPECT_EQ(Messages(), 3);
    staff_->DisplayBar(1, 1);
    EXPECT_EQ(Messages(), 3);
  }
}

TEST_F(LargeChords, AreToldOfByDisplayBarToo) {
  AddChord(1);
  staff_->Setup(tune_);
  staff_->DisplayBar(1, 1);
  EXPECT_EQ(Messages(), 1);
}

TEST_F(LargeChords, AnotherStaffOfTheTuneTellsNothingNew) {
  AddChord(1);
  Show();
  CtlQuilStaff other;
  other.Setup(tune_);
  other.RePaint();
  EXPECT_EQ(Messages(), 1);
}

TEST_F(LargeChords, AnotherTrackHasItsOwn) {
  tune_->Tracks()->Add(QStringLiteral("Two"), 2, 2, 0, false, 0, 0, QStringLiteral("2"));
  AddChord(1);
  AddChord(1, 1, 2);
  Show();
  staff_->SetSelectedTrack(2);
  Show();
  EXPECT_EQ(Messages(), 2);
}

TEST_F(LargeChords, ATuneThatIsLoadedAgainTellsAgain) {
  for (int load = 1; load <= 3; ++load) {
    StartTune();
    AddChord(1);
    Show();
    Show();
    EXPECT_EQ(Messages(), load);
  }
}

TEST_F(LargeChords, ARepaintWhileTheBoxStandsDrawsTheBarOnceAndTellsNothing) {
  AddChord(1);
  tune_->Tracks()->Item(1)->Rests()->Add(2.0, 1, 3, 0);
  staff_->SetShowRests(true);
  platform_.messages->on_show = [this] { staff_->RePaint(); };
  Show();
  EXPECT_EQ(Messages(), 1);
  const auto primitives = staff_->StaffDrawing().Primitives().size();
  staff_->RePaint();
  EXPECT_EQ(staff_->StaffDrawing().Primitives().size(), primitives);
}

TEST_F(LargeChords, ABoxThatLeadsToAnotherBarLeavesThatBarWhole) {
  AddChord(1);
  AddChord(4, 1, 1, 1);
  AddChord(3, 2, 1, 2);
  staff_->Setup(tune_);
  platform_.messages->on_show = [this] { staff_->DisplayBar(2, 1); };
  staff_->DisplayBar(1, 1);
  EXPECT_EQ(CountOf(Role::kNoteHead), 2U);
  EXPECT_EQ(staff_->ShownBar(), 2);
}

TEST_F(LargeChords, ABoxMayOutliveTheStaffAndItsTune) {
  AddChord(1);
  AddChord(2);
  staff_->SetShowRests(true);
  staff_->Setup(tune_);
  tune_.reset();
  platform_.messages->on_show = [this] { staff_.reset(); };
  staff_->RePaint();
  EXPECT_EQ(staff_, nullptr);
  EXPECT_EQ(Messages(), 1) << "nobody is left who would tell of the second";
}

TEST_F(StaffControl, AMessageThatFailsLeavesTheDrawingWhole) {
  staff_->Setup(ChordThatIsToldOf());
  platform_.messages->on_show = [] { throw OverflowError(); };
  EXPECT_THROW(staff_->RePaint(), OverflowError);
  platform_.messages->on_show = nullptr;
  EXPECT_GT(CountOf(Role::kHeading), 0U) << "what is drawn behind the notes";
  staff_->RePaint();
  EXPECT_GT(CountOf(Role::kHeading), 0U);
}

TEST_F(StaffControl, ItMayCloseWhileItsTunePlays) {
  auto tune = TuneOfBars(3);
  staff_->Setup(tune);
  staff_->show();
  QObject context;
  QObject::connect(tune.get(), &Tune::Ticked, &context, [this, &tune] {
    if (tune->BarNumber() == 2) staff_.reset();
  });
  tune->SetMelodyStartTime(static_cast<float>(SecondsSinceMidnight()));
  tune->Play();
  EXPECT_EQ(staff_, nullptr);
  EXPECT_GE(tune->BarNumber(), 3) << "the tune goes on";
}

TEST_F(StaffControl, ThereIsNoNoteDialogueUntilOneIsPutInPlace) {
  EXPECT_EQ(TheNoteDialogue(), nullptr);
}

}  // namespace
}  // namespace zelmar
