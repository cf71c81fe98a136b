// A table whose cells are changed in place: opening, storing, moving on, and rows that change under an edit.
#include "shell/cell_grid.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

#include "platform/failure.h"
#include "shell/acting_messages.h"
#include "shell/entry_combo.h"
#include "shell/field_check.h"
#include "shell/table_model.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

struct TrackRow {
  int number;
  QString name;
  int channel;
  int instrument;
};

enum Column { kNumber, kName, kChannel, kInstrument, kEvents, kColumns };

class CellGridTest : public ::testing::Test {
 protected:
  CellGridTest() {
    Platform().messages = messages_;
    auto* const row = new QHBoxLayout(window_.get());
    row->addWidget(grid_);
    for (QPushButton* button : {ok_, back_}) row->addWidget(button);
    SetLeaving(*back_, Leaving::kFree);
    QObject::connect(ok_, &QPushButton::clicked, [this] { ++commands_; });
    for (int i = 0; i < 4; ++i) rows_.push_back({i + 1, QStringLiteral("Track %1").arg(i + 1), i + 1, 0});
    model_.SetRows([this] { return static_cast<int>(rows_.size()); });
    grid_->SetUp(&model_, {}, Cells());
    model_.Reset();
    window_->resize(700, 300);
    window_->show();
    Front();
    grid_->setFocus();
  }

  std::vector<CellColumn> Cells() {
    CellColumn name{.column = kName};
    name.store = [this](int row, const QString& text) { At(row).name = text; };
    CellColumn channel{.column = kChannel};
    channel.rules = {
        {typed::Numeric(), MessageIcon::kExclamation, QStringLiteral("Please type a number here"),
         QStringLiteral("Channel must be numeric, between 1 and 16.")},
        {typed::Within(1, 16), MessageIcon::kExclamation, QStringLiteral("Channel not valid, from 1 to 16"),
         QStringLiteral("Channel must be between 1 and 16.")}};
    channel.store = [this](int row, const QString& text) {
      if (on_store) on_store();
      At(row).channel = text.toInt();
      stored_.append(QStringLiteral("%1:%2").arg(row).arg(text));
    };
    channel.after_store = [this](int row, const QString& text) {
      asked_.append(QStringLiteral("%1:%2").arg(row).arg(text));
    };
    CellColumn instrument{.column = kInstrument};
    instrument.store = [this](int row, const QString& text) {
      if (on_choice) on_choice();
      At(row).instrument = text.toInt();
      stored_.append(QStringLiteral("%1:i%2").arg(row).arg(text));
    };
    instrument.choice = CellChoice{[] {
                                     return std::vector<ComboEntry>{{QStringLiteral("Piano"), 0},
                                                                    {QStringLiteral("Organ"), 16},
                                                                    {QStringLiteral("Violin"), 40}};
                                   },
                                   [this](int row) { return At(row).instrument; }, "cboInstrument"};
    CellColumn events{.column = kEvents};
    events.why_not = Refusal{
        MessageIcon::kInformation, QStringLiteral("You can't change this"),
        QStringLiteral("The event or note count is calculated by the program, so it can't be edited.")};
    return {name, channel, instrument, events};
  }
  std::vector<TableColumn> Columns() {
    return {{QStringLiteral("TrackNumber"), [this](int row) { return At(row).number; }},
            {QStringLiteral("Description"), [this](int row) { return At(row).name; }},
            {QStringLiteral("Channel"), [this](int row) { return At(row).channel; }, Qt::AlignRight},
            {QStringLiteral("Instrument Name."), [this](int row) { return At(row).instrument; }},
            {QStringLiteral("Number of Events or Notes"), [](int) { return 12; }, Qt::AlignRight}};
  }
  TrackRow& At(int row) { return rows_.at(static_cast<std::size_t>(row)); }

  void Front() {
    window_->activateWindow();
    QCoreApplication::processEvents();
    QApplication::setActiveWindow(window_.get());
  }
  static void Turn() { QCoreApplication::processEvents(); }
  void ClickCell(int row, int column) {
    QTest::mouseClick(grid_->viewport(), Qt::LeftButton, {},
                      grid_->visualRect(model_.index(row, column)).center());
    Turn();
  }
  void Stand(int row, int column) {
    grid_->setFocus();
    grid_->setCurrentIndex(model_.index(row, column));
  }
  // The edit that is open; a test without one ends.
  QLineEdit& Line() { return Find<QLineEdit>(*grid_, "txtCell"); }
  void Open(int row, int column) {
    Stand(row, column);
    QTest::keyClick(grid_, Qt::Key_Return);
    ASSERT_TRUE(grid_->IsEditing());
  }
  void Type(const char* text) {
    Line().selectAll();
    QTest::keyClicks(&Line(), QLatin1String(text));
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers keys = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, keys);
    LetClosedWindowsGo();
  }
  // The place of the current cell and whether an edit is open on it.
  QString Place() const {
    return QStringLiteral("%1,%2%3")
        .arg(grid_->currentIndex().row())
        .arg(grid_->currentIndex().column())
        .arg(grid_->IsEditing() ? QStringLiteral(" open") : QString());
  }
  QStringList Told() const {
    QStringList texts;
    for (const ShownMessage& message : messages_->shown) texts.append(message.text);
    return texts;
  }

  ScriptedPlatform platform_;
  std::shared_ptr<ActingMessages> messages_ = std::make_shared<ActingMessages>();
  std::vector<TrackRow> rows_;
  TableModel model_{Columns()};
  std::unique_ptr<QWidget> window_ = std::make_unique<QWidget>();
  CellGrid* grid_ = new CellGrid(window_.get());
  QPushButton* ok_ = new QPushButton(window_.get());
  QPushButton* back_ = new QPushButton(window_.get());
  std::function<void()> on_store;
  std::function<void()> on_choice;
  QStringList stored_;
  QStringList asked_;
  int commands_ = 0;
  const QString out_of_range_ = QStringLiteral("Channel must be between 1 and 16.");
};

// --- Opening ---

TEST_F(CellGridTest, AClickOpensTheCellWithItsTextSelectedInItsPlace) {
  ClickCell(1, kChannel);
  ASSERT_EQ(Place(), QStringLiteral("1,2 open"));
  EXPECT_TRUE(Line().hasFocus());
  EXPECT_EQ(Line().selectedText(), QStringLiteral("2"));
  EXPECT_EQ(Line().geometry(), grid_->visualRect(model_.index(1, kChannel)));
  EXPECT_TRUE(Line().alignment().testFlag(Qt::AlignRight));
}

TEST_F(CellGridTest, EnterOpensTheCellAndTypingTakesThePlaceOfItsText) {
  Stand(0, kName);
  Key(Qt::Key_Return);
  EXPECT_EQ(Place(), QStringLiteral("0,1 open"));
  EXPECT_EQ(Line().text(), QStringLiteral("Track 1"));
  Key(Qt::Key_Escape);
  EXPECT_EQ(Place(), QStringLiteral("0,1"));
  EXPECT_TRUE(grid_->hasFocus());
  QTest::keyClicks(grid_, QStringLiteral("Oboe"));
  EXPECT_EQ(Line().text(), QStringLiteral("O"));
  QTest::keyClicks(&Line(), QStringLiteral("boe"));
  Key(Qt::Key_Return);
  EXPECT_EQ(rows_[0].name, QStringLiteral("Oboe"));
}

TEST_F(CellGridTest, ACellThatCannotBeChangedSaysWhyOnceAndOthersSayNothing) {
  ClickCell(0, kEvents);
  ASSERT_EQ(messages_->shown.size(), 1);
  EXPECT_EQ(messages_->shown[0].icon, MessageIcon::kInformation);
  EXPECT_EQ(messages_->shown[0].title, QStringLiteral("You can't change this"));
  EXPECT_FALSE(grid_->IsEditing());
  Key(Qt::Key_Return);
  Turn();
  EXPECT_EQ(Told().size(), 2);
  // Moving over it says nothing.
  Stand(0, kName);
  Key(Qt::Key_Right);
  Key(Qt::Key_Right);
  Key(Qt::Key_Right);
  ClickCell(0, kNumber);
  Turn();
  EXPECT_EQ(Told().size(), 2);
  EXPECT_FALSE(grid_->IsEditing());
}

TEST_F(CellGridTest, EnterPressesNoDefaultButton) {
  QDialog dialogue;
  auto* const row = new QHBoxLayout(&dialogue);
  auto* const ok = new QPushButton(&dialogue);
  row->addWidget(grid_);
  row->addWidget(ok);
  ok->setDefault(true);
  int presses = 0;
  QObject::connect(ok, &QPushButton::clicked, [&presses] { ++presses; });
  dialogue.show();
  QApplication::setActiveWindow(&dialogue);
  Open(0, kChannel);
  Type("5");
  Key(Qt::Key_Return);
  Stand(0, kNumber);
  Key(Qt::Key_Return);
  EXPECT_EQ(presses, 0);
  EXPECT_EQ(stored_, QStringList{QStringLiteral("0:5")});
  // Escape ends the edit and not the dialogue.
  Open(0, kChannel);
  Key(Qt::Key_Escape);
  EXPECT_TRUE(dialogue.isVisible());
  EXPECT_FALSE(grid_->IsEditing());
  grid_->setParent(window_.get());
}

TEST_F(CellGridTest, TheEditorIsNamedForAScreenReader) {
  Open(2, kChannel);
  EXPECT_EQ(Line().accessibleName(), QStringLiteral("Channel, row 3"));
}

// --- Storing and moving on ---

struct Road {
  Qt::Key key;
  int row, column;
  const char* place;  // afterwards
};

TEST_F(CellGridTest, EachKeyStoresAndGoesItsWay) {
  const Road kRoads[] = {
      {Qt::Key_Return, 1, kChannel, "1,2"},   {Qt::Key_Enter, 1, kChannel, "1,2"},
      {Qt::Key_Up, 1, kChannel, "0,2 open"},  {Qt::Key_Down, 1, kChannel, "2,2 open"},
      {Qt::Key_Up, 0, kChannel, "0,2"},       {Qt::Key_Down, 3, kChannel, "3,2"},
      {Qt::Key_Tab, 1, kChannel, "1,3 open"}, {Qt::Key_Backtab, 1, kChannel, "1,1 open"},
  };
  for (const Road& road : kRoads) {
    stored_.clear();
    Open(road.row, road.column);
    Type("9");
    Key(road.key);
    EXPECT_EQ(Place(), QLatin1String(road.place)) << road.key;
    EXPECT_EQ(stored_, QStringList{QStringLiteral("%1:9").arg(road.row)}) << road.key;
    grid_->GiveUpEdit();
    LetClosedWindowsGo();
    At(road.row).channel = road.row + 1;
  }
  EXPECT_TRUE(Told().isEmpty());
}

TEST_F(CellGridTest, TabPassesOverCellsThatCannotBeChangedAndEndsWithTheTable) {
  Open(0, kName);
  Key(Qt::Key_Backtab);
  EXPECT_EQ(Place(), QStringLiteral("0,1"));
  Open(1, kName);
  Key(Qt::Key_Backtab);
  // A list, which is opened at once.
  EXPECT_EQ(Place(), QStringLiteral("0,3 open"));
  EXPECT_TRUE(Find<QComboBox>(*grid_, "cboInstrument").view()->isVisible());
}

TEST_F(CellGridTest, AValueThatFailsIsToldAndTheEditStaysOpen) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Up, Qt::Key_Down, Qt::Key_Tab, Qt::Key_Backtab}) {
    messages_->shown.clear();
    Open(1, kChannel);
    Type("17");
    Key(key);
    ASSERT_EQ(Told(), QStringList{out_of_range_}) << key;
    EXPECT_EQ(messages_->shown[0].title, QStringLiteral("Channel not valid, from 1 to 16"));
    EXPECT_EQ(Place(), QStringLiteral("1,2 open"));
    EXPECT_TRUE(Line().hasFocus());
    EXPECT_EQ(Line().selectedText(), QStringLiteral("17"));
    Key(Qt::Key_Escape);
    EXPECT_EQ(Place(), QStringLiteral("1,2"));
  }
  EXPECT_TRUE(stored_.isEmpty());
  EXPECT_EQ(rows_[1].channel, 2);
}

TEST_F(CellGridTest, AnUnchangedTextIsNeitherTestedNorStored) {
  At(0).channel = 99;
  Open(0, kChannel);
  Key(Qt::Key_Return);
  EXPECT_FALSE(grid_->IsEditing());
  EXPECT_TRUE(stored_.isEmpty());
  EXPECT_TRUE(Told().isEmpty());
}

TEST_F(CellGridTest, EscapeGivesTheEditUp) {
  Open(0, kChannel);
  Type("5");
  Key(Qt::Key_Escape);
  EXPECT_FALSE(grid_->IsEditing());
  EXPECT_TRUE(grid_->hasFocus());
  EXPECT_TRUE(stored_.isEmpty());
  EXPECT_EQ(rows_[0].channel, 1);
}

TEST_F(CellGridTest, WhatIsStoredIsShown) {
  Open(0, kChannel);
  Type("5");
  Key(Qt::Key_Return);
  EXPECT_EQ(model_.index(0, kChannel).data().toString(), QStringLiteral("5"));
}

TEST_F(CellGridTest, WhatIsAskedAfterwardsComesWhenTheKeyHasDoneItsWork) {
  Open(0, kChannel);
  Type("5");
  QTest::keyClick(&Line(), Qt::Key_Down);
  EXPECT_TRUE(asked_.isEmpty());
  EXPECT_EQ(Place(), QStringLiteral("1,2 open"));
  Turn();
  EXPECT_EQ(asked_, QStringList{QStringLiteral("0:5")});
}

TEST_F(CellGridTest, AFailureOfTheStoreIsToldAndTheEditStaysOpen) {
  on_store = [] { throw OverflowError(); };
  Open(0, kChannel);
  Type("5");
  Key(Qt::Key_Return);
  ASSERT_EQ(messages_->shown.size(), 1);
  EXPECT_EQ(messages_->shown[0].icon, MessageIcon::kCritical);
  EXPECT_EQ(messages_->shown[0].text, QStringLiteral("Overflow"));
  EXPECT_EQ(Place(), QStringLiteral("0,2 open"));
  EXPECT_TRUE(asked_.isEmpty());
}

// --- The mouse ---

TEST_F(CellGridTest, AClickOnAnotherCellStoresAndOpensThatOne) {
  Open(0, kChannel);
  Type("5");
  ClickCell(2, kChannel);
  EXPECT_EQ(stored_, QStringList{QStringLiteral("0:5")});
  EXPECT_EQ(Place(), QStringLiteral("2,2 open"));
}

TEST_F(CellGridTest, AClickOnAnotherCellIsRefusedWhileTheValueFails) {
  ClickCell(2, kChannel);
  Key(Qt::Key_Escape);
  Open(0, kChannel);
  Type("x");
  ClickCell(2, kChannel);
  EXPECT_EQ(Told(), QStringList{QStringLiteral("Channel must be numeric, between 1 and 16.")});
  EXPECT_EQ(Place(), QStringLiteral("0,2 open"));
  EXPECT_EQ(Line().selectedText(), QStringLiteral("x"));
  EXPECT_TRUE(Line().hasFocus());
}

TEST_F(CellGridTest, AButtonGetsWhatPassesAndNothingElse) {
  Open(0, kChannel);
  Type("5");
  QTest::mouseClick(ok_, Qt::LeftButton);
  EXPECT_EQ(commands_, 1);
  EXPECT_EQ(stored_, QStringList{QStringLiteral("0:5")});
  EXPECT_FALSE(grid_->IsEditing());
  LetClosedWindowsGo();
  Open(0, kChannel);
  Type("50");
  QTest::mouseClick(ok_, Qt::LeftButton);
  Turn();
  EXPECT_EQ(commands_, 1);
  EXPECT_EQ(Told(), QStringList{out_of_range_});
  EXPECT_TRUE(Line().hasFocus());
  // Help is free.
  QTest::mouseClick(back_, Qt::LeftButton);
  Turn();
  EXPECT_TRUE(back_->hasFocus());
  EXPECT_EQ(Told().size(), 1);
}

TEST_F(CellGridTest, ACommandOfAShortcutSettlesTheEdit) {
  Open(0, kChannel);
  EXPECT_TRUE(grid_->SettleEdit());
  EXPECT_FALSE(grid_->IsEditing());
  LetClosedWindowsGo();
  Open(0, kChannel);
  Type("50");
  EXPECT_FALSE(grid_->SettleEdit());
  EXPECT_TRUE(grid_->IsEditing());
  Type("6");
  EXPECT_TRUE(SettleFieldsInFocus());
  EXPECT_EQ(stored_, QStringList{QStringLiteral("0:6")});
  EXPECT_TRUE(grid_->SettleEdit());
  EXPECT_EQ(stored_.size(), 1);
}

TEST_F(CellGridTest, AnotherProgramInFrontLeavesTheEditAsItIs) {
  Open(0, kChannel);
  Type("50");
  QApplication::setActiveWindow(nullptr);
  Turn();
  Front();
  EXPECT_EQ(Place(), QStringLiteral("0,2 open"));
  EXPECT_EQ(Line().text(), QStringLiteral("50"));
  EXPECT_TRUE(Line().hasFocus());
  EXPECT_TRUE(Told().isEmpty());
}

TEST_F(CellGridTest, TheWindowMayCloseOrEndWithAnEditOpen) {
  Open(0, kChannel);
  Type("50");
  window_->close();
  Turn();
  EXPECT_TRUE(Told().isEmpty());
  window_.reset();
  EXPECT_TRUE(stored_.isEmpty());
}

TEST_F(CellGridTest, TheWindowMayEndWhileTheValueIsStored) {
  on_store = [this] { window_.reset(); };
  Open(0, kChannel);
  Type("5");
  QTest::keyClick(&Line(), Qt::Key_Down);
  Turn();
  EXPECT_EQ(window_, nullptr);
  EXPECT_EQ(stored_.size(), 1);
}

// --- Lists ---

TEST_F(CellGridTest, AListIsOpenedAtOnceAndStoresWhatIsChosen) {
  At(1).instrument = 16;
  ClickCell(1, kInstrument);
  auto& list = Find<EntryCombo>(*grid_, "cboInstrument");
  ASSERT_TRUE(list.view()->isVisible());
  EXPECT_EQ(list.Text(), QStringLiteral("Organ"));
  QTest::keyClick(list.view(), Qt::Key_Down);
  QTest::keyClick(list.view(), Qt::Key_Return);
  LetClosedWindowsGo();
  EXPECT_EQ(stored_, QStringList{QStringLiteral("1:i40")});
  EXPECT_EQ(Place(), QStringLiteral("1,3"));
}

TEST_F(CellGridTest, AListIsGoneWhenItsChoiceIsStored) {
  int stores = 0;
  on_choice = [&] {
    ++stores;
    EXPECT_FALSE(grid_->IsEditing());
  };
  Open(1, kInstrument);
  auto& list = Find<EntryCombo>(*grid_, "cboInstrument");
  QTest::keyClick(list.view(), Qt::Key_Down);
  QTest::keyClick(list.view(), Qt::Key_Return);
  LetClosedWindowsGo();
  EXPECT_EQ(stores, 1);
}

TEST_F(CellGridTest, AListThatIsClosedWithoutAChoiceStoresNothing) {
  Open(1, kInstrument);
  auto& list = Find<EntryCombo>(*grid_, "cboInstrument");
  QTest::keyClick(list.view(), Qt::Key_Down);
  QTest::keyClick(list.view(), Qt::Key_Escape);
  Turn();
  LetClosedWindowsGo();
  EXPECT_FALSE(grid_->IsEditing());
  EXPECT_TRUE(stored_.isEmpty());
}

// --- Rows that change under an edit ---

TEST_F(CellGridTest, AResetGivesTheEditUpAndKeepsTheKeyboard) {
  Open(1, kChannel);
  Type("50");
  rows_.resize(1);
  model_.Reset();
  LetClosedWindowsGo();
  EXPECT_FALSE(grid_->IsEditing());
  EXPECT_TRUE(grid_->hasFocus());
  EXPECT_TRUE(Told().isEmpty());
  EXPECT_TRUE(stored_.isEmpty());
  Open(0, kChannel);
  Type("5");
  Key(Qt::Key_Return);
  EXPECT_EQ(stored_, QStringList{QStringLiteral("0:5")});
}

TEST_F(CellGridTest, TheRowsOfTheEditMayGo) {
  for (const int row : {0, 3}) {
    stored_.clear();
    Open(row, kChannel);
    Type("50");
    rows_.erase(rows_.begin() + row);
    model_.RowsRemoved(row, 1);
    LetClosedWindowsGo();
    EXPECT_FALSE(grid_->IsEditing());
    EXPECT_TRUE(grid_->hasFocus());
    EXPECT_TRUE(Told().isEmpty());
    Open(0, kChannel);
    Type("7");
    Key(Qt::Key_Return);
    EXPECT_EQ(stored_, QStringList{QStringLiteral("0:7")});
    rows_.insert(rows_.begin() + row, {9, QStringLiteral("again"), 1, 0});
    model_.Refresh();
  }
}

TEST_F(CellGridTest, RowsAboveTheEditMayGoAndTheValueGoesToItsRow) {
  Open(2, kChannel);
  Type("5");
  rows_.erase(rows_.begin());
  model_.RowsRemoved(0, 1);
  ASSERT_TRUE(grid_->IsEditing());
  Key(Qt::Key_Return);
  EXPECT_EQ(stored_, QStringList{QStringLiteral("1:5")});
  EXPECT_EQ(rows_[1].number, 3);
}

TEST_F(CellGridTest, TheProgramMayMakeAnotherCellTheCurrentOne) {
  Open(0, kChannel);
  Type("50");
  grid_->SelectRow(2);
  EXPECT_FALSE(grid_->IsEditing());
  Turn();
  EXPECT_TRUE(Told().isEmpty());
  EXPECT_TRUE(stored_.isEmpty());
  Open(2, kChannel);
  Type("5");
  Key(Qt::Key_Return);
  EXPECT_EQ(stored_, QStringList{QStringLiteral("2:5")});
}

TEST_F(CellGridTest, AnotherWindowOfTheProgramBringsUpNoQuestion) {
  QLineEdit other;
  other.show();
  Front();
  Open(0, kChannel);
  Type("5");
  QApplication::setActiveWindow(&other);
  other.setFocus();
  Turn();
  EXPECT_TRUE(stored_.isEmpty());
  EXPECT_TRUE(asked_.isEmpty());
  EXPECT_TRUE(grid_->IsEditing());
  Front();
  Key(Qt::Key_Return);
  EXPECT_EQ(stored_, QStringList{QStringLiteral("0:5")});
  EXPECT_EQ(asked_, QStringList{QStringLiteral("0:5")});
}

TEST_F(CellGridTest, NewValuesLeaveWhatIsBeingTypedAlone) {
  Open(0, kChannel);
  Type("1");
  At(0).channel = 8;
  model_.Refresh();
  model_.RowChanged(0);
  EXPECT_EQ(Line().text(), QStringLiteral("1"));
  Key(Qt::Key_Escape);
  EXPECT_EQ(model_.index(0, kChannel).data().toString(), QStringLiteral("8"));
}

TEST_F(CellGridTest, AStoreMayFillTheTableAnewAndTheNextCellOpensAllTheSame) {
  on_store = [this] { model_.Reset(); };
  Open(1, kChannel);
  Type("5");
  Key(Qt::Key_Down);
  EXPECT_EQ(Place(), QStringLiteral("2,2 open"));
  EXPECT_EQ(Line().text(), QStringLiteral("3"));
  Type("50");
  on_store = nullptr;
  Key(Qt::Key_Up);
  EXPECT_EQ(Told(), QStringList{out_of_range_});
  EXPECT_EQ(Place(), QStringLiteral("2,2 open"));
}

TEST_F(CellGridTest, AStoreMayLeaveFewerRowsThanTheNextCellNeeds) {
  on_store = [this] {
    rows_.resize(2);
    model_.Reset();
  };
  Open(1, kChannel);
  Type("5");
  Key(Qt::Key_Down);
  EXPECT_EQ(Place(), QStringLiteral("1,2"));
  EXPECT_TRUE(grid_->hasFocus());
}

TEST_F(CellGridTest, ABoxThatIsStillToComeStaysAwayWhenTheRowsAreNew) {
  Open(1, kChannel);
  Type("50");
  QTest::mouseClick(ok_, Qt::LeftButton);
  model_.Reset();
  Turn();
  LetClosedWindowsGo();
  EXPECT_TRUE(Told().isEmpty());
  EXPECT_EQ(commands_, 0);
}

}  // namespace
}  // namespace zelmar
