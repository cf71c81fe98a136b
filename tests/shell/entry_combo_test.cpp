// Combo boxes over entries: choosing, typing, and what stays when the entries are new.
#include "shell/entry_combo.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalSpy>
#include <QWheelEvent>

#include "shell/field_check.h"
#include "shell/theme.h"
#include "shell/theme_controls.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;
using Entries = std::vector<ComboEntry>;

class EntryComboTest : public ::testing::Test {
 protected:
  static Entries Composers() {
    return {{QStringLiteral("Bach"), 10}, {QStringLiteral("Beethoven"), 20}, {QStringLiteral("Vivaldi"), 30}};
  }
  EntryCombo& Show(Typing typing, Entries entries = Composers()) {
    window_ = std::make_unique<QWidget>();
    auto* const row = new QHBoxLayout(window_.get());
    combo_ = new EntryCombo(typing);
    after_ = new QLineEdit;
    row->addWidget(combo_);
    row->addWidget(after_);
    combo_->SetEntries(std::move(entries));
    window_->show();
    window_->activateWindow();
    QCoreApplication::processEvents();
    QApplication::setActiveWindow(window_.get());
    combo_->setFocus();
    return *combo_;
  }
  void Type(const char* text) {
    combo_->lineEdit()->selectAll();
    QTest::keyClicks(combo_, QLatin1String(text));
    if (QCompleter* const completer = combo_->completer()) completer->popup()->hide();
    // Where a list closes, the offscreen platform may leave no window in front.
    QApplication::setActiveWindow(window_.get());
  }
  void Leave() {
    QTest::keyClick(combo_, Qt::Key_Tab);
    QCoreApplication::processEvents();
  }
  const QList<ShownMessage>& Boxes() const { return platform_.messages->shown; }

  ScriptedPlatform platform_;
  std::unique_ptr<QWidget> window_;
  EntryCombo* combo_ = nullptr;
  QLineEdit* after_ = nullptr;
};

// --- Without typing ---

TEST_F(EntryComboTest, AnEntryIsSelectedByItsNumber) {
  EntryCombo& combo = Show(Typing::kNone);
  QSignalSpy chosen(&combo, &EntryCombo::Chosen);
  EXPECT_EQ(combo.Number(), std::nullopt);
  EXPECT_EQ(combo.Text(), QString());
  combo.SelectNumber(20);
  EXPECT_EQ(combo.Number(), 20);
  EXPECT_EQ(combo.Text(), QStringLiteral("Beethoven"));
  combo.SelectNumber(21);
  EXPECT_EQ(combo.Number(), std::nullopt);
  combo.SetText(QStringLiteral("Bach"));
  EXPECT_EQ(combo.Number(), 10);
  combo.SetText(QStringLiteral("Bac"));
  EXPECT_EQ(combo.Number(), std::nullopt);
  EXPECT_EQ(chosen.count(), 0);
}

TEST_F(EntryComboTest, AChoiceOfAPersonIsTold) {
  EntryCombo& combo = Show(Typing::kNone);
  combo.SelectNumber(10);
  QSignalSpy chosen(&combo, &EntryCombo::Chosen);
  QTest::keyClick(&combo, Qt::Key_Down);
  EXPECT_EQ(combo.Number(), 20);
  EXPECT_EQ(chosen.count(), 1);
  combo.showPopup();
  combo.view()->setCurrentIndex(combo.model()->index(2, 0));
  QTest::keyClick(combo.view(), Qt::Key_Return);
  EXPECT_EQ(combo.Number(), 30);
  EXPECT_EQ(chosen.count(), 2);
}

TEST_F(EntryComboTest, NewEntriesKeepTheOneThatIsSelected) {
  EntryCombo& combo = Show(Typing::kNone);
  QSignalSpy chosen(&combo, &EntryCombo::Chosen);
  QSignalSpy moved(&combo, &QComboBox::currentIndexChanged);
  combo.SelectNumber(20);
  moved.clear();
  combo.SetEntries({{QStringLiteral("Ludwig"), 20}, {QStringLiteral("Johann"), 10}});
  EXPECT_EQ(combo.Number(), 20);
  EXPECT_EQ(combo.Text(), QStringLiteral("Ludwig"));
  combo.SetEntries({{QStringLiteral("Johann"), 10}});
  EXPECT_EQ(combo.Number(), std::nullopt);
  combo.SetEntries({});
  EXPECT_EQ(combo.Number(), std::nullopt);
  EXPECT_EQ(moved.count(), 0);
  EXPECT_EQ(chosen.count(), 0);
}

TEST_F(EntryComboTest, TheWheelChangesNothingInPassing) {
  for (const Typing typing : {Typing::kNone, Typing::kFree}) {
    EntryCombo& combo = Show(typing);
    combo.SelectNumber(10);
    after_->setFocus();
    const QPointF middle = combo.rect().center();
    QWheelEvent turn(middle, combo.mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase,
                     false);
    QApplication::sendEvent(&combo, &turn);
    EXPECT_EQ(combo.Number(), 10);
    EXPECT_FALSE(combo.hasFocus());
  }
}

TEST_F(EntryComboTest, TheListIsAsWideAsItsTextsWithinReason) {
  const QString text = QStringLiteral("127.  (Orchestra Hit with a long name)");
  EntryCombo& combo = Show(Typing::kNone, {{QStringLiteral("a"), 1}, {text, 2}});
  // As in the program: without its style sheet the list is a menu across the screen.
  combo.setStyleSheet(ControlStyles(ColourScheme::kLight));
  combo.setFixedWidth(120);
  combo.showPopup();
  EXPECT_GT(combo.view()->width(), combo.view()->fontMetrics().horizontalAdvance(text));
  combo.hidePopup();
  combo.SetEntries({{QString(5000, QLatin1Char('m')), 1}});
  combo.showPopup();
  EXPECT_LT(combo.view()->width(), 600);
}

// --- With typing ---

TEST_F(EntryComboTest, FreeTextIsKeptAndStoredWhenTheBoxIsLeft) {
  EntryCombo& combo = Show(Typing::kFree);
  QStringList stored;
  combo.Check()->SetStore([&stored](const QString& text) { stored.append(text); });
  QSignalSpy chosen(&combo, &EntryCombo::Chosen);
  Type("Brahms");
  EXPECT_TRUE(stored.isEmpty());
  Leave();
  EXPECT_EQ(stored, QStringList{QStringLiteral("Brahms")});
  EXPECT_EQ(combo.Text(), QStringLiteral("Brahms"));
  EXPECT_EQ(combo.Number(), std::nullopt);
  EXPECT_EQ(combo.count(), 3);
  EXPECT_EQ(chosen.count(), 1);
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(EntryComboTest, AChoiceInTheListIsStoredAtOnce) {
  EntryCombo& combo = Show(Typing::kFree);
  QStringList stored;
  combo.Check()->SetStore([&stored](const QString& text) { stored.append(text); });
  QSignalSpy chosen(&combo, &EntryCombo::Chosen);
  QTest::keyClick(&combo, Qt::Key_Down);
  ASSERT_TRUE(combo.view()->isVisible());
  combo.view()->setCurrentIndex(combo.model()->index(1, 0));
  QTest::keyClick(combo.view(), Qt::Key_Return);
  EXPECT_EQ(stored, QStringList{QStringLiteral("Beethoven")});
  EXPECT_EQ(combo.Number(), 20);
  EXPECT_EQ(chosen.count(), 1);
  Leave();
  EXPECT_EQ(stored.size(), 1);
}

TEST_F(EntryComboTest, ATextThatIsAnEntryButForCaseBecomesTheEntry) {
  for (const bool by_enter : {true, false}) {
    for (const Typing typing : {Typing::kFree, Typing::kListed}) {
      EntryCombo& combo = Show(typing);
      QStringList stored;
      combo.Check()->SetStore([&stored](const QString& text) { stored.append(text); });
      Type("VIVALDI");
      if (by_enter)
        QTest::keyClick(&combo, Qt::Key_Return);
      else
        Leave();
      EXPECT_EQ(combo.Text(), QStringLiteral("Vivaldi"));
      EXPECT_EQ(combo.Number(), 30);
      ASSERT_FALSE(stored.isEmpty());
      for (const QString& text : stored) EXPECT_EQ(text, QStringLiteral("Vivaldi"));
    }
  }
}

TEST_F(EntryComboTest, WhatIsNotInTheListIsRefusedWhereTheListIsAll) {
  EntryCombo& combo = Show(Typing::kListed);
  Type("Brahms");
  Leave();
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("Not in the list"));
  EXPECT_EQ(Boxes()[0].text, QStringLiteral("\"Brahms\" is not in the list. Please choose an entry of it."));
  EXPECT_TRUE(combo.hasFocus());
  EXPECT_EQ(combo.lineEdit()->selectedText(), QStringLiteral("Brahms"));
  Type("Bach");
  Leave();
  EXPECT_TRUE(after_->hasFocus());
  EXPECT_EQ(combo.Number(), 10);
  // Nothing is no wrong entry.
  combo.setFocus();
  combo.lineEdit()->selectAll();
  QTest::keyClick(&combo, Qt::Key_Delete);
  Leave();
  EXPECT_TRUE(after_->hasFocus());
  EXPECT_EQ(Boxes().size(), 1);
}

TEST_F(EntryComboTest, RulesOfItsOwnTakeThePlaceOfTheMessage) {
  EntryCombo& combo = Show(Typing::kListed);
  combo.Check()->SetRules({{typed::Required(), MessageIcon::kExclamation,
                            QStringLiteral("Sorry, this instrument is not recognized."),
                            QStringLiteral("Please choose a valid instrument from the drop-down list.")}});
  combo.SelectNumber(10);
  combo.lineEdit()->selectAll();
  QTest::keyClick(&combo, Qt::Key_Delete);
  Leave();
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("Sorry, this instrument is not recognized."));
  EXPECT_TRUE(combo.hasFocus());
}

TEST_F(EntryComboTest, AChoiceThatFailsARuleStaysOpenUntilItIsPutRight) {
  EntryCombo& combo = Show(Typing::kListed);
  combo.Check()->SetRules({{[](const QString& text) { return text != QLatin1String("Bach"); },
                            MessageIcon::kExclamation,
                            {},
                            QStringLiteral("not Bach")}});
  QStringList stored;
  combo.Check()->SetStore([&stored](const QString& text) { stored.append(text); });
  combo.SelectNumber(20);
  QTest::keyClick(&combo, Qt::Key_Up);
  QCoreApplication::processEvents();
  EXPECT_EQ(combo.Text(), QStringLiteral("Bach"));
  EXPECT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(combo.hasFocus());
  Leave();
  EXPECT_EQ(Boxes().size(), 2);
  EXPECT_TRUE(combo.hasFocus());
  EXPECT_TRUE(stored.isEmpty());
  QTest::keyClick(&combo, Qt::Key_Escape);
  EXPECT_EQ(combo.Text(), QStringLiteral("Beethoven"));
  EXPECT_EQ(combo.Number(), 20);
  Leave();
  EXPECT_TRUE(after_->hasFocus());
}

TEST_F(EntryComboTest, ItCompletesAsTyped) {
  EntryCombo& combo = Show(Typing::kFree);
  QTest::keyClicks(&combo, QStringLiteral("be"));
  QAbstractItemView* const offered = combo.completer()->popup();
  ASSERT_TRUE(offered->isVisible());
  ASSERT_EQ(offered->model()->rowCount(), 1);
  EXPECT_EQ(offered->model()->index(0, 0).data().toString(), QStringLiteral("Beethoven"));
  // What is typed is not touched until the person takes the offer.
  EXPECT_EQ(combo.Text(), QStringLiteral("be"));
  QStringList stored;
  combo.Check()->SetStore([&stored](const QString& text) { stored.append(text); });
  QTest::keyClick(offered, Qt::Key_Down);
  QTest::keyClick(offered, Qt::Key_Return);
  EXPECT_EQ(combo.Text(), QStringLiteral("Beethoven"));
  EXPECT_EQ(combo.Number(), 20);
  ASSERT_FALSE(stored.isEmpty());
  EXPECT_EQ(stored.last(), QStringLiteral("Beethoven"));
}

TEST_F(EntryComboTest, NewEntriesLeaveWhatIsTypedAndWhatItStandsFor) {
  EntryCombo& combo = Show(Typing::kFree);
  QStringList stored;
  combo.Check()->SetStore([&stored](const QString& text) { stored.append(text); });
  Type("Brahms");
  combo.SetEntries({{QStringLiteral("Brahms"), 40}});
  EXPECT_EQ(combo.Text(), QStringLiteral("Brahms"));
  EXPECT_EQ(combo.Number(), 40);
  EXPECT_TRUE(combo.Check()->IsChanged());
  Leave();
  EXPECT_EQ(stored, QStringList{QStringLiteral("Brahms")});
  combo.SetText(QStringLiteral("Britten"));
  combo.SetEntries(Composers());
  EXPECT_EQ(combo.Text(), QStringLiteral("Britten"));
  EXPECT_FALSE(combo.Check()->IsChanged());
}

TEST_F(EntryComboTest, EntriesAndTextsOfTheProgramAreNotTested) {
  EntryCombo& combo = Show(Typing::kListed);
  combo.SetText(QStringLiteral("Brahms"));
  EXPECT_EQ(combo.Text(), QStringLiteral("Brahms"));
  EXPECT_EQ(combo.Number(), std::nullopt);
  Leave();
  EXPECT_TRUE(after_->hasFocus());
  EXPECT_TRUE(Boxes().isEmpty());
}

TEST_F(EntryComboTest, OfTwoEntriesWithOneTextTheSelectedOneStays) {
  EntryCombo& combo = Show(Typing::kFree, {{QStringLiteral("Piano"), 1}, {QStringLiteral("Piano"), 2}});
  combo.SelectNumber(2);
  Leave();
  EXPECT_EQ(combo.Number(), 2);
}

TEST_F(EntryComboTest, TheBoxMayEndWhileItsChoiceIsStored) {
  EntryCombo& combo = Show(Typing::kFree);
  combo.Check()->SetStore([this](const QString&) { combo_->deleteLater(); });
  Type("Brahms");
  QTest::keyClick(&combo, Qt::Key_Return);
  LetClosedWindowsGo();
  EXPECT_EQ(window_->findChild<EntryCombo*>(), nullptr);
}

}  // namespace
}  // namespace zelmar
