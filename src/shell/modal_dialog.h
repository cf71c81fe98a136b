// The base of the windows that are shown modally: caption, help, Escape, place, and the making of their
// controls.
//
// ShowModally returns at once, so that a tune that plays goes on while such a window is open; exec returns
// when it is closed, for callers that go on with what it hands back. Fields that are tested when they are
// left (CheckedField) let a person go to Help and to the way out untested; what acts on the fields calls
// SettleFields first.
#pragma once

#include <QDialog>
#include <QList>
#include <QPoint>
#include <optional>

class QBoxLayout;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace zelmar {

class CheckedField;

class ModalDialog : public QDialog {
  Q_OBJECT

 public:
  // Shows the window modally and returns; it deletes itself when it is closed.
  void ShowModally();

  // Where its upper left corner is to be, on the screen; moved as far as is needed for all of it to be seen.
  // Without a place it stands in the middle of the main window's area.
  void SetPlace(const QPoint& top_left);

 protected:
  // Its topic in the help is that of its row in the table of commands; SetHelpPage names a page instead.
  ModalDialog(const QString& system_name, const QString& caption, QWidget* parent);
  void SetHelpPage(const QString& page, const QString& title);

  enum class Access { kTyped, kShown };
  // A line of text under its system name: one to type into, or one that only shows.
  QLineEdit* MakeField(const char* name, Access access = Access::kTyped);
  // A line of text that is tested when it is left.
  CheckedField* MakeCheckedField(const char* name);
  // A box of a few lines to type into; Tab leaves it.
  QPlainTextEdit* MakeTextBox(const char* name);
  // The words before a field, whose mnemonic leads to it.
  QLabel* MakeLabel(const QString& words, QWidget* field);
  // A grid of labels and fields; AddRow puts a label before a field, or before a row of several.
  static QGridLayout* MakeForm();
  static void AddRow(QGridLayout* form, QLabel* label, QWidget* field);
  static void AddRow(QGridLayout* form, QLabel* label, QLayout* fields);
  QPushButton* MakeButton(const char* name, const QString& caption, const QString& tooltip);

  // The button that closes the window without a change, as Escape does; none with a null name.
  struct WayOut {
    const char* name;
    QString caption;
    QString hint;
  };
  // Help at the left; at the right other buttons, the way out (cmdBack unless told), and the button that does
  // it all and that Enter presses.
  QBoxLayout* MakeButtonRow(QPushButton* main_button);
  QBoxLayout* MakeButtonRow(QPushButton* main_button, const QList<QPushButton*>& others,
                            const WayOut& way_out);

  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void ShowHelp();

  QString help_page_;
  QString help_title_;
  std::optional<QPoint> place_;
};

// Brings the window of that name to the front; false when it is not open.
bool RaiseModalDialog(const QString& system_name);

// The widget that modal windows stand before: the main window, or nothing where there is none.
QWidget* ParentOfDialogs();

// Brings the window to the front where it is open, or shows a new one.
template <typename Dialog>
void ShowOneDialog() {
  if (!RaiseModalDialog(QLatin1String(Dialog::kName))) (new Dialog(ParentOfDialogs()))->ShowModally();
}

}  // namespace zelmar
