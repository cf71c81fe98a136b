// What every modal window has: its keys, its row of buttons, its place, and a free way out of a field.
#include "shell/modal_dialog.h"

#include <QApplication>
#include <QGridLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include "shell/checked_field.h"
#include "shell/field_check.h"
#include "shell/loaded_forms.h"
#include "support/scripted_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class SampleDialog : public ModalDialog {
 public:
  explicit SampleDialog(bool with_way_out = true)
      : ModalDialog(QStringLiteral("dialogSample"), QStringLiteral("A sample"), nullptr),
        bar(new CheckedField(this)) {
    bar->setText(QStringLiteral("1"));
    bar->Check().SetRules({{typed::Numeric(), MessageIcon::kExclamation, {}, QStringLiteral("numeric")}});
    auto* const form = MakeForm();
    AddRow(form, MakeLabel(QStringLiteral("Ba&r"), bar), bar);
    save = MakeButton("cmdOK", QStringLiteral("&Save"), QStringLiteral("Keep it"));
    remove = MakeButton("cmdDelete", QStringLiteral("&Delete"), {});
    connect(save, &QPushButton::clicked, this, [this] {
      if (SettleFields(*this)) accept();
    });
    auto* const column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addLayout(MakeButtonRow(
        save, {remove},
        with_way_out ? WayOut{"cmdCancel", QStringLiteral("&Cancel"), QStringLiteral("No change")}
                     : WayOut{}));
  }
  using ModalDialog::SetHelpPage;

  CheckedField* bar;
  QPushButton* save;
  QPushButton* remove;
};

class PlainDialog : public ModalDialog {
 public:
  PlainDialog() : ModalDialog(QStringLiteral("dialogPlain"), QStringLiteral("Plain"), nullptr) {
    auto* const column = new QVBoxLayout(this);
    text = MakeTextBox("txtDesc");
    shown = MakeField("txtShown", Access::kShown);
    column->addWidget(text);
    column->addWidget(shown);
    column->addLayout(MakeButtonRow(MakeButton("cmdOK", QStringLiteral("&OK"), {})));
  }

  QPlainTextEdit* text;
  QLineEdit* shown;
};

class ModalDialogTest : public ::testing::Test {
 protected:
  static void Show(QDialog& dialogue) {
    dialogue.show();
    dialogue.activateWindow();
    QCoreApplication::processEvents();
    QApplication::setActiveWindow(&dialogue);
  }
  QStringList Told() const {
    QStringList texts;
    for (const ShownMessage& message : platform_.messages->shown) texts.append(message.text);
    return texts;
  }

  ScriptedPlatform platform_;
};

TEST_F(ModalDialogTest, TheButtonsStandAsEverywhereAndTabReachesHelpLast) {
  SampleDialog dialogue;
  Show(dialogue);
  dialogue.bar->setFocus();
  QStringList order;
  for (int step = 0; step < 4; ++step) {
    QTest::keyClick(dialogue.focusWidget(), Qt::Key_Tab);
    order.append(dialogue.focusWidget()->objectName());
  }
  EXPECT_EQ(order.join(QLatin1Char(' ')), QStringLiteral("cmdDelete cmdCancel cmdOK cmdHelp"));
  const auto left = [&dialogue](const char* name) { return Find<QWidget>(dialogue, name).x(); };
  EXPECT_LT(left("cmdHelp"), left("cmdDelete"));
  EXPECT_LT(left("cmdDelete"), left("cmdCancel"));
  EXPECT_LT(left("cmdCancel"), left("cmdOK"));
  EXPECT_TRUE(dialogue.save->isDefault());
}

TEST_F(ModalDialogTest, TheUsualWayOutIsBack) {
  PlainDialog dialogue;
  Show(dialogue);
  EXPECT_EQ(Find<QPushButton>(dialogue, "cmdBack").text(), QStringLiteral("&Back  (Cancel)"));
  Click(dialogue, "cmdBack");
  EXPECT_FALSE(dialogue.isVisible());
  EXPECT_EQ(dialogue.result(), QDialog::Rejected);
}

TEST_F(ModalDialogTest, AWindowThatActsAtOnceHasNoWayOut) {
  SampleDialog dialogue(false);
  EXPECT_EQ(dialogue.findChild<QPushButton*>(QStringLiteral("cmdCancel")), nullptr);
  EXPECT_EQ(dialogue.findChild<QPushButton*>(QStringLiteral("cmdBack")), nullptr);
}

TEST_F(ModalDialogTest, EscapeAndTheWayOutLeaveAFieldThatFails) {
  for (const bool by_key : {true, false}) {
    SampleDialog dialogue;
    Show(dialogue);
    dialogue.bar->setFocus();
    dialogue.bar->selectAll();
    QTest::keyClicks(dialogue.bar, QStringLiteral("x"));
    if (by_key)
      QTest::keyClick(dialogue.bar, Qt::Key_Escape);
    else
      QTest::mouseClick(&Find<QPushButton>(dialogue, "cmdCancel"), Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_FALSE(dialogue.isVisible());
    EXPECT_EQ(dialogue.result(), QDialog::Rejected);
  }
  EXPECT_TRUE(Told().isEmpty());
}

TEST_F(ModalDialogTest, NoRoadToTheMainButtonPassesAFieldThatFails) {
  SampleDialog dialogue;
  Show(dialogue);
  const auto type = [&dialogue](const char* text) {
    dialogue.bar->setFocus();
    dialogue.bar->selectAll();
    QTest::keyClicks(dialogue.bar, QLatin1String(text));
  };
  type("x");
  QTest::keyClick(dialogue.bar, Qt::Key_Return);
  EXPECT_EQ(Told().size(), 1);
  QTest::mouseClick(dialogue.save, Qt::LeftButton);
  QCoreApplication::processEvents();
  EXPECT_EQ(Told().size(), 2);
  // As a mnemonic does, which leaves the keyboard in the field.
  dialogue.save->click();
  EXPECT_EQ(Told().size(), 3);
  EXPECT_TRUE(dialogue.isVisible());
  type("7");
  QTest::keyClick(dialogue.bar, Qt::Key_Return);
  EXPECT_EQ(dialogue.result(), QDialog::Accepted);
}

TEST_F(ModalDialogTest, ItIsFoundByItsNameWhileItIsOpen) {
  EXPECT_FALSE(RaiseModalDialog(QStringLiteral("dialogSample")));
  const QPointer<SampleDialog> dialogue = new SampleDialog;
  dialogue->ShowModally();
  EXPECT_TRUE(dialogue->isModal());
  EXPECT_TRUE(RaiseModalDialog(QStringLiteral("dialogSample")));
  dialogue->reject();
  EXPECT_FALSE(RaiseModalDialog(QStringLiteral("dialogSample")));
  LetClosedWindowsGo();
  EXPECT_TRUE(dialogue.isNull());
}

TEST_F(ModalDialogTest, ExecHandsBackHowItWasClosed) {
  SampleDialog dialogue;
  QTimer::singleShot(0, &dialogue, [&dialogue] { dialogue.save->click(); });
  EXPECT_EQ(dialogue.exec(), QDialog::Accepted);
}

TEST_F(ModalDialogTest, ItStandsWhereItIsToldAndNowhereOffTheScreen) {
  const QRect room = QApplication::primaryScreen()->availableGeometry();
  const struct {
    QPoint wish;
    bool reachable;
  } wishes[] = {{room.topLeft() + QPoint(20, 30), true},
                {room.bottomRight() - QPoint(5, 5), false},
                {room.topLeft() - QPoint(300, 300), false},
                {QPoint(room.right() * 3, room.top() + 10), false}};
  for (const auto& [wish, reachable] : wishes) {
    SampleDialog dialogue;
    dialogue.SetPlace(wish);
    Show(dialogue);
    EXPECT_TRUE(room.contains(dialogue.frameGeometry())) << wish.x() << ' ' << wish.y();
    if (reachable) {
      EXPECT_EQ(dialogue.frameGeometry().topLeft(), wish);
    }
  }
}

TEST_F(ModalDialogTest, HelpShowsTheWindowsOwnPageByKeyAndButton) {
  for (const bool by_key : {true, false}) {
    SampleDialog dialogue;
    dialogue.SetHelpPage(QStringLiteral("User\\DialogEditNote.htm"), QStringLiteral("Note Editing Dialogue"));
    Show(dialogue);
    QString title;
    QTimer closer;
    closer.callOnTimeout([&title] {
      QWidget* const help = FindLoadedForm(QStringLiteral("frmHelpModal"));
      if (help == nullptr || !help->isVisible()) return;
      title = help->windowTitle();
      help->close();
    });
    closer.start(1);
    if (by_key)
      QTest::keyClick(&dialogue, Qt::Key_F1);
    else
      Click(dialogue, "cmdHelp");
    EXPECT_EQ(title, QStringLiteral("Note Editing Dialogue"));
    EXPECT_TRUE(dialogue.isVisible());
  }
}

TEST_F(ModalDialogTest, ABoxOfTextIsLeftByTabAndAFieldThatOnlyShowsIsPassedOver) {
  PlainDialog dialogue;
  Show(dialogue);
  dialogue.text->setFocus();
  QTest::keyClick(dialogue.text, Qt::Key_Tab);
  EXPECT_EQ(dialogue.focusWidget()->objectName(), QStringLiteral("cmdBack"));
  EXPECT_TRUE(dialogue.shown->isReadOnly());
}

}  // namespace
}  // namespace zelmar
