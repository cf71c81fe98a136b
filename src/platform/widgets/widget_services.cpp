#include "platform/widgets/widget_services.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QUrl>

#include "platform/services.h"
#include "platform/widgets/page_printing.h"
#include "platform/widgets/printing.h"

namespace zelmar {

namespace {

QString TitleOr(const QString& title) {
  return title.isEmpty() ? QString(kApplicationTitle) : title;
}

QMessageBox::Icon BoxIcon(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kInformation:
      return QMessageBox::Information;
    case MessageIcon::kExclamation:
      return QMessageBox::Warning;
    case MessageIcon::kCritical:
      return QMessageBox::Critical;
    case MessageIcon::kQuestion:
      return QMessageBox::Question;
    case MessageIcon::kNone:
      break;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons BoxButtons(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::kOkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case MessageButtons::kYesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case MessageButtons::kYesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MessageButtons::kOk:
      break;
  }
  return QMessageBox::Ok;
}

QMessageBox::StandardButton BoxButton(MessageAnswer answer) {
  switch (answer) {
    case MessageAnswer::kCancel:
      return QMessageBox::Cancel;
    case MessageAnswer::kYes:
      return QMessageBox::Yes;
    case MessageAnswer::kNo:
      return QMessageBox::No;
    case MessageAnswer::kOk:
    case MessageAnswer::kClosed:
      break;
  }
  return QMessageBox::Ok;
}

// What the button stands for, or the closing of the box without one.
MessageAnswer AnswerOf(int pressed, MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::kYesNo:
      if (pressed == QMessageBox::Yes) return MessageAnswer::kYes;
      return pressed == QMessageBox::No ? MessageAnswer::kNo : MessageAnswer::kClosed;
    case MessageButtons::kYesNoCancel:
      if (pressed == QMessageBox::Yes) return MessageAnswer::kYes;
      return pressed == QMessageBox::No ? MessageAnswer::kNo : MessageAnswer::kCancel;
    case MessageButtons::kOkCancel:
      return pressed == QMessageBox::Ok ? MessageAnswer::kOk : MessageAnswer::kCancel;
    case MessageButtons::kOk:
      break;
  }
  return MessageAnswer::kOk;
}

// A message box takes Esc for its No, or for nothing at all. A question that has no Cancel may be left
// unanswered here.
class QuestionBox : public QMessageBox {
 public:
  using QMessageBox::QMessageBox;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::Cancel))
      reject();
    else
      QMessageBox::keyPressEvent(event);
  }
  void closeEvent(QCloseEvent* event) override {
    event->accept();
    reject();
  }
};

int ShowBox(QMessageBox& box, MessageAnswer default_button) {
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(BoxButton(default_button));
  return box.exec();
}

class BoxMessages : public MessageService {
 public:
  MessageAnswer Show(MessageIcon icon, const QString& text, const QString& title, MessageButtons buttons,
                     MessageAnswer default_button) override {
    QWidget* const window = QApplication::activeWindow();
    if (buttons == MessageButtons::kYesNo) {
      QuestionBox box(BoxIcon(icon), TitleOr(title), text, BoxButtons(buttons), window);
      return AnswerOf(ShowBox(box, default_button), buttons);
    }
    QMessageBox box(BoxIcon(icon), TitleOr(title), text, BoxButtons(buttons), window);
    return AnswerOf(ShowBox(box, default_button), buttons);
  }
};

class BoxInput : public InputService {
 public:
  QString Ask(const QString& prompt, const QString& title, const QString& default_text) override {
    bool confirmed = false;
    const QString text = QInputDialog::getText(QApplication::activeWindow(), TitleOr(title), prompt,
                                               QLineEdit::Normal, default_text, &confirmed);
    if (!confirmed) return {};
    return text.isNull() ? QStringLiteral("") : text;
  }
};

class BoxFiles : public FileService {
 public:
  QString Choose(FileChoice purpose, const QString& title, const QString& filter,
                 const QString& current) override {
    QFileDialog chooser(QApplication::activeWindow(), TitleOr(title), current, ChooserFilter(filter));
    chooser.setAcceptMode(purpose == FileChoice::kOpen ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    chooser.setOption(QFileDialog::HideNameFilterDetails);
    chooser.setFileMode(purpose == FileChoice::kOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    const QFileInfo place(current);
    if (!current.isEmpty() && !place.isDir()) {
      chooser.setDirectory(place.path());
      chooser.selectFile(place.fileName());
    }
    return chooser.exec() == QDialog::Accepted ? chooser.selectedFiles().value(0) : QString();
  }
};

class PaperPrinter : public PrintService {
 public:
  bool PrintLandscape(QWidget& window) override {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    // The dialogue offers a PDF file beside the printers.
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    if (dialog.exec() != QDialog::Accepted) return false;
    PrintOnLandscapePage(window, printer);
    return true;
  }

  bool PrintPages(PrintedPages& pages) override {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    if (dialog.exec() != QDialog::Accepted) return false;
    PrintPagesOn(pages, printer);
    return true;
  }
};

class BrowserPages : public PageService {
 public:
  void OpenWebAddress(const QString& address) override {
    if (QDesktopServices::openUrl(QUrl(address))) return;
    ShowMessage(MessageIcon::kExclamation,
                QStringLiteral("No program of this system opens \"%1\".").arg(address));
  }
};

QString BothCases(const QString& pattern) {
  QString result;
  for (const QChar letter : pattern)
    if (letter.toLower() == letter.toUpper())
      result += letter;
    else
      result += QLatin1Char('[') + letter.toLower() + letter.toUpper() + QLatin1Char(']');
  return result;
}

}  // namespace

QString ChooserFilter(const QString& filter) {
  const QStringList parts = filter.split(QLatin1Char('|'));
  QStringList choices;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString words = parts[i].section(QLatin1Char('('), 0, 0).trimmed();
    QStringList patterns;
    for (const QString& pattern : parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts))
      patterns.append(BothCases(pattern.trimmed()));
    choices.append(QStringLiteral("%1 (%2)").arg(words, patterns.join(QLatin1Char(' '))));
  }
  return choices.join(QStringLiteral(";;"));
}

void InstallWidgetServices() {
  Services& services = Platform();
  services.messages = std::make_shared<BoxMessages>();
  services.input = std::make_shared<BoxInput>();
  services.files = std::make_shared<BoxFiles>();
  services.printer = std::make_shared<PaperPrinter>();
  services.pages = std::make_shared<BrowserPages>();
}

}  // namespace zelmar
