// A field that is tested when it is left: what is stored, what is told, and where the keyboard goes.
#include "shell/field_check.h"

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include "platform/widgets/widget_services.h"
#include "shell/acting_messages.h"
#include "shell/checked_field.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

// Two fields and four buttons in a window of the kind that is asked for.
template <typename Window>
struct Form {
  Form() {
    auto* const row = new QHBoxLayout(&window);
    for (QWidget* part : std::initializer_list<QWidget*>{bar, beat, ok, back, cancel}) {
      part->setFocusPolicy(Qt::StrongFocus);
      row->addWidget(part);
    }
    bar->setText(QStringLiteral("3"));
    beat->setText(QStringLiteral("1"));
    bar->Check().SetRules(
        {{typed::Numeric(), MessageIcon::kExclamation, QStringLiteral("Invalid bar number."),
          QStringLiteral("Bar number must be numeric, between 1 and 400.")},
         {typed::Within(1, 400), MessageIcon::kInformation, QStringLiteral("Out of range"),
          QStringLiteral("Bar number must be between 1 and 400.")}});
    bar->Check().SetStore([this](const QString& text) { stored.append(text); });
    SetLeaving(*back, Leaving::kFree);
    SetLeaving(*cancel, Leaving::kGivesUp);
    QObject::connect(ok, &QPushButton::clicked, [this] { ++commands; });
  }

  Window window;
  CheckedField* bar = new CheckedField(&window);
  CheckedField* beat = new CheckedField(&window);
  QPushButton* ok = new QPushButton(QStringLiteral("&OK"), &window);
  QPushButton* back = new QPushButton(QStringLiteral("&Help"), &window);
  QPushButton* cancel = new QPushButton(QStringLiteral("&Cancel"), &window);
  QStringList stored;
  int commands = 0;
};

class FieldCheckTest : public ::testing::Test {
 protected:
  FieldCheckTest() { Platform().messages = messages_; }

  template <typename Window>
  static void Show(Form<Window>& form) {
    form.window.show();
    Front(form.window);
    form.bar->setFocus();
    ASSERT_TRUE(form.bar->hasFocus());
  }
  static void Front(QWidget& window) {
    window.activateWindow();
    Settle();
    QApplication::setActiveWindow(&window);
  }
  static void Settle() { QCoreApplication::processEvents(); }
  // Types over what stands in the field.
  static void Type(QLineEdit& field, const char* text) {
    field.selectAll();
    QTest::keyClicks(&field, QLatin1String(text));
  }
  static void Tab(QWidget& from) {
    QTest::keyClick(&from, Qt::Key_Tab);
    Settle();
  }
  static void Press(QWidget& button) {
    QTest::mouseClick(&button, Qt::LeftButton);
    Settle();
  }
  QStringList Told() const {
    QStringList texts;
    for (const ShownMessage& message : messages_->shown) texts.append(message.text);
    return texts;
  }
  static void ExpectHeld(const QLineEdit& field, const char* text) {
    EXPECT_TRUE(field.hasFocus());
    EXPECT_EQ(field.text(), QLatin1String(text));
    EXPECT_EQ(field.selectedText(), QLatin1String(text));
  }

  ScriptedPlatform platform_;
  std::shared_ptr<ActingMessages> messages_ = std::make_shared<ActingMessages>();
  const QString out_of_range_ = QStringLiteral("Bar number must be between 1 and 400.");
};

TEST_F(FieldCheckTest, ATextThatPassesIsStoredOnceWhenTheFieldIsLeft) {
  Form<QWidget> form;
  Show(form);
  Type(*form.bar, "12");
  EXPECT_TRUE(form.stored.isEmpty());
  Tab(*form.bar);
  EXPECT_EQ(form.stored, QStringList{QStringLiteral("12")});
  EXPECT_TRUE(form.beat->hasFocus());
  form.bar->setFocus();
  Tab(*form.bar);
  EXPECT_EQ(form.stored.size(), 1);
  EXPECT_TRUE(Told().isEmpty());
}

TEST_F(FieldCheckTest, ATextThatFailsIsToldOnceAndTheKeyboardStaysWithTheTextSelected) {
  Form<QWidget> form;
  Show(form);
  Type(*form.bar, "x");
  Tab(*form.bar);
  ASSERT_EQ(messages_->shown.size(), 1);
  const ShownMessage& box = messages_->shown[0];
  EXPECT_EQ(box.icon, MessageIcon::kExclamation);
  EXPECT_EQ(box.title, QStringLiteral("Invalid bar number."));
  EXPECT_EQ(box.text, QStringLiteral("Bar number must be numeric, between 1 and 400."));
  EXPECT_EQ(box.buttons, MessageButtons::kOk);
  ExpectHeld(*form.bar, "x");
  Type(*form.bar, "401");
  Tab(*form.bar);
  EXPECT_EQ(messages_->shown.last().icon, MessageIcon::kInformation);
  EXPECT_EQ(Told().last(), out_of_range_);
  ExpectHeld(*form.bar, "401");
  EXPECT_TRUE(form.stored.isEmpty());
  Type(*form.bar, "400");
  Tab(*form.bar);
  EXPECT_EQ(form.stored, QStringList{QStringLiteral("400")});
  EXPECT_EQ(messages_->shown.size(), 2);
}

TEST_F(FieldCheckTest, EnterTestsToo) {
  Form<QWidget> form;
  int enters = 0;
  QObject::connect(form.bar, &QLineEdit::returnPressed, [&enters] { ++enters; });
  Show(form);
  Type(*form.bar, "0");
  QTest::keyClick(form.bar, Qt::Key_Return);
  EXPECT_EQ(Told(), QStringList{out_of_range_});
  ExpectHeld(*form.bar, "0");
  EXPECT_EQ(enters, 0);
  Type(*form.bar, "5");
  QTest::keyClick(form.bar, Qt::Key_Enter);
  EXPECT_EQ(form.stored, QStringList{QStringLiteral("5")});
  EXPECT_EQ(enters, 1);
  // Not once more on leaving.
  Tab(*form.bar);
  EXPECT_EQ(form.stored.size(), 1);
}

TEST_F(FieldCheckTest, EnterOnATextThatFailsDoesNotPressTheDefaultButtonOfADialogue) {
  Form<QDialog> form;
  form.ok->setDefault(true);
  Show(form);
  Type(*form.bar, "x");
  QTest::keyClick(form.bar, Qt::Key_Return);
  EXPECT_EQ(form.commands, 0);
  EXPECT_EQ(Told().size(), 1);
  Type(*form.bar, "7");
  QTest::keyClick(form.bar, Qt::Key_Return);
  EXPECT_EQ(form.commands, 1);
  EXPECT_EQ(form.stored, QStringList{QStringLiteral("7")});
}

TEST_F(FieldCheckTest, AFieldThatWasNotChangedIsNotTested) {
  Form<QWidget> form;
  form.bar->setText(QStringLiteral("not a number"));
  Show(form);
  Tab(*form.bar);
  EXPECT_TRUE(form.beat->hasFocus());
  // Typed, and back to what stood there.
  form.bar->setFocus();
  Type(*form.bar, "x");
  Type(*form.bar, "not a number");
  Tab(*form.bar);
  EXPECT_TRUE(form.beat->hasFocus());
  // What the program sets takes the place of what was typed.
  form.bar->setFocus();
  Type(*form.bar, "x");
  form.bar->setText(QStringLiteral("9999"));
  EXPECT_FALSE(form.bar->Check().IsChanged());
  Tab(*form.bar);
  EXPECT_TRUE(form.beat->hasFocus());
  EXPECT_TRUE(Told().isEmpty());
  EXPECT_TRUE(form.stored.isEmpty());
}

TEST_F(FieldCheckTest, ARequiredFieldIsTestedUnchangedWhereItIsAskedFor) {
  Form<QWidget> form;
  form.bar->setText(QString());
  Show(form);
  EXPECT_TRUE(form.bar->Check().Settle());
  EXPECT_FALSE(form.bar->Check().Test());
  EXPECT_EQ(Told().size(), 1);
  EXPECT_TRUE(form.bar->hasFocus());
}

// --- Buttons ---

TEST_F(FieldCheckTest, APressOfAButtonRunsNoCommandOnATextThatFails) {
  Form<QWidget> form;
  Show(form);
  Type(*form.bar, "401");
  Press(*form.ok);
  EXPECT_EQ(form.commands, 0);
  EXPECT_FALSE(form.ok->isDown());
  EXPECT_EQ(Told(), QStringList{out_of_range_});
  ExpectHeld(*form.bar, "401");
  Type(*form.bar, "40");
  Press(*form.ok);
  EXPECT_EQ(form.commands, 1);
  EXPECT_EQ(form.stored, QStringList{QStringLiteral("40")});
}

TEST_F(FieldCheckTest, WhatPassesIsStoredBeforeTheCommandRuns) {
  Form<QWidget> form;
  QStringList at_command;
  QObject::connect(form.ok, &QPushButton::clicked, [&] { at_command = form.stored; });
  Show(form);
  Type(*form.bar, "40");
  // Without a turn of the event loop between press and command.
  QTest::mouseClick(form.ok, Qt::LeftButton);
  EXPECT_EQ(at_command, QStringList{QStringLiteral("40")});
}

TEST_F(FieldCheckTest, ASecondPressWhileTheBoxIsStillToComeMakesNoSecondBox) {
  Form<QWidget> form;
  Show(form);
  Type(*form.bar, "401");
  QTest::keyClick(form.bar, Qt::Key_Tab);
  QTest::keyClick(form.bar, Qt::Key_Tab);
  QTest::mouseClick(form.ok, Qt::LeftButton);
  EXPECT_FALSE(form.bar->Check().Settle());
  Settle();
  EXPECT_EQ(Told().size(), 1);
  EXPECT_EQ(form.commands, 0);
  ExpectHeld(*form.bar, "401");
}

TEST_F(FieldCheckTest, ALaterPressIsAsGoodAsAny) {
  Form<QWidget> form;
  Show(form);
  Type(*form.bar, "401");
  Tab(*form.bar);
  form.bar->setText(QStringLiteral("3"));
  QTest::mouseClick(form.ok, Qt::LeftButton);
  EXPECT_EQ(form.commands, 1);
}

TEST_F(FieldCheckTest, HelpIsReachedWithoutABoxAndTheTextIsTestedOnTheWayOn) {
  Form<QWidget> form;
  Show(form);
  Type(*form.bar, "401");
  Press(*form.back);
  EXPECT_TRUE(form.back->hasFocus());
  EXPECT_TRUE(Told().isEmpty());
  EXPECT_TRUE(form.stored.isEmpty());
  Press(*form.ok);
  EXPECT_EQ(form.commands, 0);
  EXPECT_EQ(Told(), QStringList{out_of_range_});
  ExpectHeld(*form.bar, "401");
  // Back in the field by itself, it waits no more.
  Type(*form.bar, "x");
  Press(*form.back);
  form.bar->setFocus();
  Type(*form.bar, "8");
  Tab(*form.bar);
  EXPECT_EQ(form.stored, QStringList{QStringLiteral("8")});
  EXPECT_EQ(Told().size(), 1);
}

TEST_F(FieldCheckTest, BackStoresWhatPasses) {
  Form<QWidget> form;
  Show(form);
  Type(*form.bar, "12");
  Press(*form.back);
  EXPECT_EQ(form.stored, QStringList{QStringLiteral("12")});
}

TEST_F(FieldCheckTest, CancelStoresNothing) {
  Form<QWidget> form;
  QObject::connect(form.cancel, &QPushButton::clicked, &form.window, &QWidget::close);
  Show(form);
  Type(*form.bar, "12");
  Press(*form.cancel);
  EXPECT_FALSE(form.window.isVisible());
  EXPECT_TRUE(form.stored.isEmpty());
  EXPECT_TRUE(Told().isEmpty());
}

// --- Boxes ---

// A box that really takes the keyboard, answered after a while.
TEST_F(FieldCheckTest, ItsOwnBoxTakesTheKeyboardAndGivesItBack) {
  const Services before = Platform();
  InstallWidgetServices();
  Form<QWidget> form;
  Show(form);
  int boxes = 0, ticks = 0;
  bool box_had_keyboard = false;
  QTimer answer;
  answer.callOnTimeout([&] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr || !box->isVisible()) return;
    box->activateWindow();
    box_had_keyboard = box->isAncestorOf(QApplication::focusWidget());
    // Nothing waits for a box that never gets it.
    if (!box_had_keyboard && ++ticks < 1000) return;
    ++boxes;
    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
  });
  answer.start(1);
  Type(*form.bar, "401");
  // The box stands within this turn of the event loop.
  Press(*form.ok);
  for (int turn = 0; turn < 20; ++turn) Settle();
  EXPECT_EQ(boxes, 1);
  EXPECT_TRUE(box_had_keyboard);
  EXPECT_EQ(form.commands, 0);
  Front(form.window);
  ExpectHeld(*form.bar, "401");
  Platform() = before;
}

TEST_F(FieldCheckTest, LeavingWhileTheBoxStandsShowsNoSecondOne) {
  Form<QWidget> form;
  Show(form);
  messages_->on_show = [&form] {
    form.beat->setFocus();
    EXPECT_FALSE(form.bar->Check().Settle());
    QCoreApplication::processEvents();
  };
  Type(*form.bar, "401");
  Tab(*form.bar);
  EXPECT_EQ(Told().size(), 1);
  ExpectHeld(*form.bar, "401");
}

TEST_F(FieldCheckTest, TheWindowMayEndWhileTheBoxStands) {
  auto form = std::make_unique<Form<QWidget>>();
  Show(*form);
  messages_->on_show = [&form] { form.reset(); };
  Type(*form->bar, "401");
  QTest::keyClick(form->bar, Qt::Key_Return);
  EXPECT_EQ(Told().size(), 1);
  EXPECT_EQ(form, nullptr);
}

TEST_F(FieldCheckTest, AWindowThatClosesBeforeTheBoxComesShowsNone) {
  Form<QWidget> form;
  Show(form);
  Type(*form.bar, "401");
  QTest::keyClick(form.bar, Qt::Key_Tab);
  form.window.close();
  Settle();
  EXPECT_TRUE(Told().isEmpty());
}

// --- Ways out of the window ---

TEST_F(FieldCheckTest, AWindowThatClosesOrIsHiddenTellsNothing) {
  for (const bool closes : {true, false}) {
    Form<QWidget> form;
    Show(form);
    Type(*form.bar, "401");
    if (closes)
      form.window.close();
    else
      form.window.hide();
    Settle();
    EXPECT_TRUE(form.stored.isEmpty());
  }
  EXPECT_TRUE(Told().isEmpty());
}

TEST_F(FieldCheckTest, AFieldThatIsHiddenOrDisabledTellsNothing) {
  for (const bool hides : {true, false}) {
    Form<QWidget> form;
    Show(form);
    Type(*form.bar, "401");
    if (hides)
      form.bar->hide();
    else
      form.bar->setEnabled(false);
    Settle();
    EXPECT_FALSE(form.bar->hasFocus());
    EXPECT_TRUE(form.stored.isEmpty());
  }
  EXPECT_TRUE(Told().isEmpty());
}

TEST_F(FieldCheckTest, TheEndOfAWindowStoresWhatPassesButThatOfADialogueDoesNot) {
  Form<QWidget> form;
  Show(form);
  Type(*form.bar, "12");
  form.window.close();
  EXPECT_EQ(form.stored, QStringList{QStringLiteral("12")});

  Form<QDialog> dialogue;
  Show(dialogue);
  Type(*dialogue.bar, "12");
  QTest::keyClick(dialogue.bar, Qt::Key_Escape);
  EXPECT_FALSE(dialogue.window.isVisible());
  EXPECT_TRUE(dialogue.stored.isEmpty());
  EXPECT_TRUE(Told().isEmpty());
}

TEST_F(FieldCheckTest, AnotherProgramInFrontMakesNoBoxAndStoresNothing) {
  Form<QWidget> form;
  Show(form);
  for (const char* text : {"12", "401"}) {
    Type(*form.bar, text);
    QApplication::setActiveWindow(nullptr);
    Settle();
    EXPECT_EQ(QApplication::focusWidget(), nullptr);
    EXPECT_TRUE(Told().isEmpty());
    EXPECT_TRUE(form.stored.isEmpty());
    Front(form.window);
    EXPECT_TRUE(form.bar->hasFocus());
    EXPECT_EQ(form.bar->text(), QLatin1String(text));
  }
  Tab(*form.bar);
  EXPECT_EQ(Told(), QStringList{out_of_range_});
}

TEST_F(FieldCheckTest, AnotherWindowOfTheProgramGetsWhatPassesAndMakesNoBox) {
  Form<QWidget> form;
  QLineEdit other;
  other.show();
  Show(form);
  Type(*form.bar, "401");
  Front(other);
  other.setFocus();
  Settle();
  EXPECT_TRUE(other.hasFocus());
  EXPECT_TRUE(Told().isEmpty());
  EXPECT_TRUE(form.stored.isEmpty());
  Front(form.window);
  Type(*form.bar, "40");
  Front(other);
  Settle();
  EXPECT_EQ(form.stored, QStringList{QStringLiteral("40")});
  EXPECT_TRUE(Told().isEmpty());
}

TEST_F(FieldCheckTest, TheWindowsOfTheMainWindowsAreaAreWindowsOfTheirOwn) {
  QMdiArea area;
  auto* const form = new Form<QWidget>;
  auto* const other = new QLineEdit;
  QMdiSubWindow* const form_frame = area.addSubWindow(&form->window);
  QMdiSubWindow* const other_frame = area.addSubWindow(other);
  area.resize(900, 400);
  area.show();
  Front(area);
  area.setActiveSubWindow(form_frame);
  form->bar->setFocus();
  Type(*form->bar, "401");
  area.setActiveSubWindow(other_frame);
  Settle();
  EXPECT_TRUE(other->hasFocus());
  EXPECT_TRUE(Told().isEmpty());
  // Back in its window, on another control than the field.
  area.setActiveSubWindow(form_frame);
  Press(*form->ok);
  EXPECT_EQ(Told(), QStringList{out_of_range_});
  EXPECT_EQ(form->commands, 0);
  Type(*form->bar, "12");
  form_frame->close();
  EXPECT_EQ(form->stored, QStringList{QStringLiteral("12")});
  form->window.setParent(nullptr);
  delete form;
}

// --- Keys and commands ---

TEST_F(FieldCheckTest, EscapePutsBackWhatStoodThere) {
  Form<QWidget> form;
  Show(form);
  Type(*form.bar, "401");
  QTest::keyClick(form.bar, Qt::Key_Escape);
  ExpectHeld(*form.bar, "3");
  Tab(*form.bar);
  EXPECT_TRUE(form.beat->hasFocus());
  EXPECT_TRUE(Told().isEmpty());
  EXPECT_TRUE(form.stored.isEmpty());
}

TEST_F(FieldCheckTest, ACommandOfTheMenuSettlesTheFieldFirst) {
  Form<QWidget> form;
  Show(form);
  EXPECT_TRUE(SettleFieldsInFocus());
  Type(*form.bar, "12");
  EXPECT_TRUE(SettleFieldsInFocus());
  EXPECT_EQ(form.stored, QStringList{QStringLiteral("12")});
  Type(*form.bar, "401");
  EXPECT_FALSE(SettleFieldsInFocus());
  EXPECT_EQ(Told(), QStringList{out_of_range_});
  // A text that waits while the keyboard is elsewhere in the window counts too.
  Press(*form.back);
  EXPECT_FALSE(SettleFieldsInFocus());
  ExpectHeld(*form.bar, "401");
  Press(*form.cancel);
  EXPECT_TRUE(SettleFieldsInFocus());
}

TEST_F(FieldCheckTest, ASpinButtonEntersItsValue) {
  Form<QWidget> form;
  Show(form);
  EXPECT_TRUE(form.bar->Enter(QStringLiteral("4")));
  EXPECT_EQ(form.stored, QStringList{QStringLiteral("4")});
  EXPECT_FALSE(form.bar->Enter(QStringLiteral("401")));
  EXPECT_EQ(Told(), QStringList{out_of_range_});
  EXPECT_TRUE(form.bar->Enter(QStringLiteral("4")));
  EXPECT_EQ(form.stored.size(), 1);
}

// --- Hooks ---

TEST_F(FieldCheckTest, ARuleBetweenFieldsIsTriedAfterTheTextIsStored) {
  Form<QWidget> form;
  Show(form);
  bool beat_fits = false;
  form.bar->Check().SetRuleBetweenFields([&]() -> std::optional<Refusal> {
    EXPECT_FALSE(form.stored.isEmpty());
    if (beat_fits) return std::nullopt;
    return Refusal{MessageIcon::kInformation, {}, QStringLiteral("the beat does not fit")};
  });
  Type(*form.bar, "12");
  Tab(*form.bar);
  EXPECT_EQ(Told(), QStringList{QStringLiteral("the beat does not fit")});
  ExpectHeld(*form.bar, "12");
  EXPECT_EQ(form.stored, QStringList{QStringLiteral("12")});
  // The text is the same, and it is still to be settled.
  beat_fits = true;
  Tab(*form.bar);
  EXPECT_EQ(form.stored, (QStringList{QStringLiteral("12"), QStringLiteral("12")}));
  EXPECT_TRUE(form.beat->hasFocus());
}

TEST_F(FieldCheckTest, ARowMaySayThatTheRuleBetweenFieldsIsTriedAllTheSame) {
  Form<QWidget> form;
  form.bar->Check().SetRules({{typed::Numeric(), MessageIcon::kExclamation, {}, QStringLiteral("numeric")},
                              {typed::WholePartOneOf({2, 4, 8}),
                               MessageIcon::kExclamation,
                               {},
                               QStringLiteral("2, 4 or 8"),
                               AfterFailure::kRuleBetweenFields}});
  form.bar->Check().SetRuleBetweenFields([] {
    return std::optional<Refusal>({MessageIcon::kInformation, {}, QStringLiteral("the pair")});
  });
  Show(form);
  Type(*form.bar, "x");
  Tab(*form.bar);
  EXPECT_EQ(Told(), QStringList{QStringLiteral("numeric")});
  messages_->shown.clear();
  Type(*form.bar, "5");
  Tab(*form.bar);
  EXPECT_EQ(Told(), (QStringList{QStringLiteral("2, 4 or 8"), QStringLiteral("the pair")}));
  ExpectHeld(*form.bar, "5");
  EXPECT_TRUE(form.stored.isEmpty());
}

TEST_F(FieldCheckTest, WhatARuleBetweenFieldsAsksOfTheOtherShowsNothing) {
  Form<QWidget> form;
  form.beat->Check().SetRules({{typed::Below(5), MessageIcon::kNone, {}, QStringLiteral("below 5")}});
  form.beat->setText(QStringLiteral("9"));
  ASSERT_TRUE(form.beat->Check().WhyNot());
  EXPECT_EQ(form.beat->Check().WhyNot()->text, QStringLiteral("below 5"));
  form.beat->setText(QStringLiteral("4"));
  EXPECT_FALSE(form.beat->Check().WhyNot());
  EXPECT_TRUE(Told().isEmpty());
}

TEST_F(FieldCheckTest, WithAFallbackTheTextIsReplacedAndTheKeyboardGoesOn) {
  Form<QWidget> form;
  form.bar->Check().SetFallback([] { return QStringLiteral("C4"); });
  Show(form);
  Type(*form.bar, "H4");
  Tab(*form.bar);
  EXPECT_EQ(Told().size(), 1);
  EXPECT_TRUE(form.beat->hasFocus());
  EXPECT_EQ(form.bar->text(), QStringLiteral("C4"));
  EXPECT_FALSE(form.bar->Check().IsChanged());
  EXPECT_TRUE(form.stored.isEmpty());
  // A command does not run on a text that the person has not seen.
  form.bar->setFocus();
  Type(*form.bar, "H4");
  QTest::mouseClick(form.ok, Qt::LeftButton);
  EXPECT_EQ(form.bar->text(), QStringLiteral("C4"));
  Settle();
  EXPECT_EQ(Told().size(), 2);
  EXPECT_EQ(form.commands, 0);
  Press(*form.ok);
  EXPECT_EQ(form.commands, 1);
  form.bar->setFocus();
  Type(*form.bar, "H4");
  QTest::keyClick(form.bar, Qt::Key_Return);
  EXPECT_EQ(Told().size(), 3);
  EXPECT_EQ(form.bar->text(), QStringLiteral("C4"));
}

TEST_F(FieldCheckTest, AValueThatDoesNotFitIsToldAndTheKeyboardStays) {
  Form<QWidget> form;
  form.bar->Check().SetRules({{typed::Numeric(), MessageIcon::kExclamation, {}, QStringLiteral("numeric")}});
  std::int16_t bar = 3;
  form.bar->Check().SetStore(StoreRounded<std::int16_t>([&bar](std::int16_t value) { bar = value; }));
  Show(form);
  Type(*form.bar, "99999999999999999999");
  Tab(*form.bar);
  ASSERT_EQ(messages_->shown.size(), 1);
  EXPECT_EQ(messages_->shown[0].icon, MessageIcon::kCritical);
  EXPECT_EQ(messages_->shown[0].text, QStringLiteral("Overflow"));
  ExpectHeld(*form.bar, "99999999999999999999");
  EXPECT_EQ(bar, 3);
}

TEST_F(FieldCheckTest, WhatIsAskedAfterStoringComesWhenTheCommandHasRun) {
  Form<QWidget> form;
  QStringList order;
  form.bar->Check().SetAfterStore([&order] { order.append(QStringLiteral("asked")); });
  QObject::connect(form.ok, &QPushButton::clicked, [&order] { order.append(QStringLiteral("command")); });
  Show(form);
  Type(*form.bar, "12");
  Press(*form.ok);
  EXPECT_EQ(order, (QStringList{QStringLiteral("command"), QStringLiteral("asked")}));
  Type(*form.bar, "401");
  Tab(*form.bar);
  EXPECT_EQ(order.size(), 2);
}

TEST_F(FieldCheckTest, ATextThatLeadsToAQuestionIsNotStoredInPassing) {
  Form<QWidget> form;
  int asked = 0;
  form.bar->Check().SetAfterStore([&asked] { ++asked; });
  QLineEdit other;
  other.show();
  Show(form);
  Type(*form.bar, "12");
  Front(other);
  other.setFocus();
  Settle();
  EXPECT_TRUE(form.stored.isEmpty());
  Front(form.window);
  form.bar->setFocus();
  Tab(*form.bar);
  EXPECT_EQ(form.stored, QStringList{QStringLiteral("12")});
  EXPECT_EQ(asked, 1);
  // The end of the window stores, and asks nothing any more.
  form.bar->setFocus();
  Type(*form.bar, "13");
  form.window.close();
  Settle();
  EXPECT_EQ(form.stored.last(), QStringLiteral("13"));
  EXPECT_EQ(asked, 1);
}

TEST_F(FieldCheckTest, TheWindowMayEndWhileTheTextIsStored) {
  for (const int way : {0, 1}) {
    auto form = std::make_unique<Form<QWidget>>();
    Show(*form);
    form->bar->Check().SetStore([&form](const QString&) { form.reset(); });
    Type(*form->bar, "12");
    if (way == 0)
      QTest::keyClick(form->bar, Qt::Key_Return);
    else
      form->bar->Check().TakeChoice();
    Settle();
    EXPECT_EQ(form, nullptr);
  }
  EXPECT_TRUE(Told().isEmpty());
}

TEST_F(FieldCheckTest, AStoreThatShowsABoxIsStillOneStore) {
  Form<QWidget> form;
  form.bar->Check().SetStore([&form](const QString& text) {
    form.stored.append(text);
    ShowMessage(MessageIcon::kInformation, QStringLiteral("stored"));
  });
  messages_->on_show = [&form] { form.beat->setFocus(); };
  Show(form);
  Type(*form.bar, "12");
  QTest::keyClick(form.bar, Qt::Key_Return);
  Settle();
  EXPECT_EQ(form.stored.size(), 1);
  EXPECT_EQ(Told().size(), 1);
}

}  // namespace
}  // namespace zelmar
