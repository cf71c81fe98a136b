// The boxes that a person meets: the message box, the input box and the print dialogue, answered by key and
// mouse while they stand.
#include <QApplication>
#include <QComboBox>
#include <QFileInfo>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

#include "platform/services.h"
#include "platform/widgets/widget_services.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

// The services of a real run for its lifetime.
class RealBoxes : public ::testing::Test {
 protected:
  RealBoxes() : before_(Platform()) { InstallWidgetServices(); }
  ~RealBoxes() override { Platform() = before_; }

  // Acts in the box that `command` shows. A box that is left standing is closed, so that nothing waits.
  template <typename Box>
  void During(const std::function<void()>& command, const std::function<void(Box&)>& act) {
    bool seen = false;
    QTimer timer;
    timer.callOnTimeout([&] {
      QWidget* const shown = QApplication::activeModalWidget();
      if (shown == nullptr || !shown->isVisible()) return;
      if (auto* const box = qobject_cast<Box*>(shown); box != nullptr && !seen) {
        seen = true;
        act(*box);
      }
      if (QWidget* const left = QApplication::activeModalWidget()) {
        ADD_FAILURE() << "left standing: " << qPrintable(left->windowTitle());
        left->close();
      }
    });
    timer.start(1);
    command();
    EXPECT_TRUE(seen) << "no box stood";
  }

  static MessageAnswer Ask(MessageButtons buttons, MessageAnswer default_button) {
    return ShowMessage(MessageIcon::kQuestion, QStringLiteral("Save <b>it</b>?"),
                       QStringLiteral("About to close"), buttons, default_button);
  }
  MessageAnswer AnswerTo(MessageButtons buttons, MessageAnswer default_button,
                         const std::function<void(QMessageBox&)>& act) {
    MessageAnswer answer = MessageAnswer::kOk;
    During<QMessageBox>([&] { answer = Ask(buttons, default_button); }, act);
    return answer;
  }

  Services before_;
};

void PressReturn(QMessageBox& box) {
  QTest::keyClick(&box, Qt::Key_Return);
}

void PressEscape(QMessageBox& box) {
  QTest::keyClick(&box, Qt::Key_Escape);
}

std::function<void(QMessageBox&)> ClickButton(QMessageBox::StandardButton button) {
  return [button](QMessageBox& box) { QTest::mouseClick(box.button(button), Qt::LeftButton); };
}

TEST_F(RealBoxes, ABoxWithThreeButtonsTellsThemApart) {
  constexpr auto kThree = MessageButtons::kYesNoCancel;
  EXPECT_EQ(AnswerTo(kThree, MessageAnswer::kCancel, ClickButton(QMessageBox::Yes)), MessageAnswer::kYes);
  EXPECT_EQ(AnswerTo(kThree, MessageAnswer::kCancel, ClickButton(QMessageBox::No)), MessageAnswer::kNo);
  EXPECT_EQ(AnswerTo(kThree, MessageAnswer::kYes, ClickButton(QMessageBox::Cancel)), MessageAnswer::kCancel);
  EXPECT_EQ(AnswerTo(kThree, MessageAnswer::kCancel, PressReturn), MessageAnswer::kCancel);
  EXPECT_EQ(AnswerTo(kThree, MessageAnswer::kYes, PressReturn), MessageAnswer::kYes);
  EXPECT_EQ(AnswerTo(kThree, MessageAnswer::kYes, PressEscape), MessageAnswer::kCancel);
  EXPECT_EQ(AnswerTo(kThree, MessageAnswer::kYes, [](QMessageBox& box) { box.close(); }),
            MessageAnswer::kCancel);
}

TEST_F(RealBoxes, AMessageBoxShowsItsWordsAsTheyAreWritten) {
  AnswerTo(MessageButtons::kYesNo, MessageAnswer::kNo, [](QMessageBox& box) {
    EXPECT_EQ(box.text(), QStringLiteral("Save <b>it</b>?"));
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.windowTitle(), QStringLiteral("About to close"));
    EXPECT_EQ(box.icon(), QMessageBox::Question);
    EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
    PressReturn(box);
  });
}

TEST_F(RealBoxes, NoIsTheDefaultWhereItIsAskedFor) {
  constexpr auto kNo = MessageAnswer::kNo;
  EXPECT_EQ(AnswerTo(MessageButtons::kYesNo, kNo,
                     [](QMessageBox& box) {
                       EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
                       PressReturn(box);
                     }),
            MessageAnswer::kNo);
  EXPECT_EQ(AnswerTo(MessageButtons::kYesNo, kNo, ClickButton(QMessageBox::Yes)), MessageAnswer::kYes);
  EXPECT_EQ(AnswerTo(MessageButtons::kYesNo, kNo, ClickButton(QMessageBox::No)), MessageAnswer::kNo);
  EXPECT_EQ(AnswerTo(MessageButtons::kYesNo, MessageAnswer::kYes, PressReturn), MessageAnswer::kYes);
}

TEST_F(RealBoxes, EscapeGivesTheCarefulAnswer) {
  for (const MessageAnswer by_default : {MessageAnswer::kYes, MessageAnswer::kNo}) {
    EXPECT_EQ(AnswerTo(MessageButtons::kYesNo, by_default, PressEscape), MessageAnswer::kClosed);
    EXPECT_EQ(AnswerTo(MessageButtons::kYesNo, by_default, [](QMessageBox& box) { box.close(); }),
              MessageAnswer::kClosed);
  }
  EXPECT_EQ(AnswerTo(MessageButtons::kOkCancel, MessageAnswer::kOk, PressEscape), MessageAnswer::kCancel);
  EXPECT_EQ(AnswerTo(MessageButtons::kOk, MessageAnswer::kOk, PressEscape), MessageAnswer::kOk);
}

TEST_F(RealBoxes, CancelIsTheDefaultWhereItIsAskedFor) {
  EXPECT_EQ(AnswerTo(MessageButtons::kOkCancel, MessageAnswer::kCancel, PressReturn), MessageAnswer::kCancel);
  EXPECT_EQ(AnswerTo(MessageButtons::kOkCancel, MessageAnswer::kOk, PressReturn), MessageAnswer::kOk);
}

TEST_F(RealBoxes, AMessageWithoutATitleBearsTheApplicationsOwn) {
  During<QMessageBox>([] { ShowMessage(MessageIcon::kInformation, QStringLiteral("Done")); },
                      [](QMessageBox& box) {
                        EXPECT_EQ(box.windowTitle(), QString(kApplicationTitle));
                        PressReturn(box);
                      });
}

// --- The input box ---

TEST_F(RealBoxes, AnInputBoxGivesWhatIsTypedInPlaceOfWhatStoodThere) {
  QString answer;
  During<QInputDialog>(
      [&] { answer = InputBox(QStringLiteral("Which bar?"), QStringLiteral("Go To"), QStringLiteral("7")); },
      [](QInputDialog& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Go To"));
        EXPECT_EQ(box.labelText(), QStringLiteral("Which bar?"));
        EXPECT_EQ(box.textValue(), QStringLiteral("7"));
        auto* const field = box.findChild<QLineEdit*>();
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(field->selectedText(), QStringLiteral("7"));
        QTest::keyClicks(field, QStringLiteral("12"));
        QTest::keyClick(field, Qt::Key_Return);
      });
  EXPECT_EQ(answer, QStringLiteral("12"));
}

TEST_F(RealBoxes, CancelOfAnInputBoxGivesAnEmptyText) {
  QString answer = QStringLiteral("before");
  During<QInputDialog>(
      [&] { answer = InputBox(QStringLiteral("Which bar?"), QStringLiteral("Go To"), QStringLiteral("7")); },
      [](QInputDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_TRUE(answer.isNull());
}

TEST_F(RealBoxes, AnEmptyTextThatIsConfirmedIsNoCancel) {
  QString answer;
  During<QInputDialog>([&] { answer = InputBox(QStringLiteral("New name"), QStringLiteral("Save As")); },
                       [](QInputDialog& box) { QTest::keyClick(&box, Qt::Key_Return); });
  EXPECT_TRUE(answer.isEmpty());
  EXPECT_FALSE(answer.isNull());
}

// --- The printer ---

class RealPrinter : public RealBoxes {
 protected:
  RealPrinter() {
    window_.resize(800, 300);
    window_.setText(QStringLiteral("Words on paper"));
  }

  bool PrintDuring(const std::function<void(QPrintDialog&)>& act) {
    bool printed = false;
    During<QPrintDialog>([&] { printed = Platform().printer->PrintLandscape(window_); }, act);
    return printed;
  }
  // Into a file, the last of the printers, as a person chooses it.
  static void PrintInto(QPrintDialog& dialog, const QString& path) {
    auto& printers = testing_support::Find<QComboBox>(dialog, "printers");
    printers.setCurrentIndex(printers.count() - 1);
    testing_support::Find<QLineEdit>(dialog, "filename").setText(path);
    dialog.accept();
  }
  QString Path() const { return folder_.filePath(QStringLiteral("page.pdf")); }

  QTemporaryDir folder_;
  QLabel window_;
};

TEST_F(RealPrinter, ThePageIsWrittenIntoThePdfFileThatIsChosenAndLiesOnItsSide) {
  EXPECT_TRUE(PrintDuring([this](QPrintDialog& dialog) {
    EXPECT_EQ(dialog.printer()->pageLayout().orientation(), QPageLayout::Landscape);
    PrintInto(dialog, Path());
  }));
  QFile file(Path());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray pdf = file.readAll();
  ASSERT_TRUE(pdf.startsWith("%PDF"));
  EXPECT_EQ(pdf.count("/Type /Page\n"), 1);
  const QRegularExpression box(QStringLiteral("/MediaBox \\[\\s*0 0 (\\d+)[.\\d]* (\\d+)"));
  const auto found = box.match(QString::fromLatin1(pdf));
  EXPECT_GT(found.captured(1).toInt(), found.captured(2).toInt());
}

TEST_F(RealPrinter, PagesAreWrittenUprightAndOnlyThoseThatAreChosen) {
  // Five pages without anything on them.
  struct FivePages : PrintedPages {
    QString Title() const override { return QStringLiteral("Five pages"); }
    int LayOut(double, double) override { return 5; }
    void Paint(int page, QPainter&) override { painted.append(page); }
    QList<int> painted;
  };
  FivePages pages;
  bool printed = false;
  const auto print = [&](const std::function<void(QPrintDialog&)>& act) {
    During<QPrintDialog>([&] { printed = Platform().printer->PrintPages(pages); }, act);
  };
  print([this](QPrintDialog& dialog) { PrintInto(dialog, Path()); });
  EXPECT_TRUE(printed);
  EXPECT_EQ(pages.painted, QList<int>({1, 2, 3, 4, 5}));
  pages.painted.clear();
  print([this](QPrintDialog& dialog) {
    testing_support::Find<QRadioButton>(dialog, "printRange").setChecked(true);
    testing_support::Find<QSpinBox>(dialog, "from").setValue(2);
    testing_support::Find<QSpinBox>(dialog, "to").setValue(3);
    PrintInto(dialog, Path());
  });
  EXPECT_EQ(pages.painted, QList<int>({2, 3}));
  pages.painted.clear();
  print([](QPrintDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_FALSE(printed);
  EXPECT_TRUE(pages.painted.isEmpty());
}

TEST_F(RealPrinter, ADialogueThatIsCancelledPrintsNothing) {
  EXPECT_FALSE(PrintDuring([this](QPrintDialog& dialog) {
    auto& printers = testing_support::Find<QComboBox>(dialog, "printers");
    printers.setCurrentIndex(printers.count() - 1);
    testing_support::Find<QLineEdit>(dialog, "filename").setText(Path());
    QTest::keyClick(&dialog, Qt::Key_Escape);
  }));
  EXPECT_FALSE(QFileInfo::exists(Path()));
}

}  // namespace
}  // namespace zelmar
