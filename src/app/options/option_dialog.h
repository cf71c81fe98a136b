// The base of the option windows that are shown modally: caption, help, Escape, place and the making of
// controls.
//
// A tune that plays goes on while such a window is open, since showing one returns at once.
#pragma once

#include <QDialog>

class QBoxLayout;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace zelmar {

class OptionDialog : public QDialog {
  Q_OBJECT

 public:
  // Shows the window modally and returns; it deletes itself when it is closed.
  void ShowModally();

 protected:
  // `help_context` is the window's topic number in the help.
  OptionDialog(const QString& system_name, const QString& caption, int help_context, QWidget* parent);

  enum class Access { kTyped, kShown };
  // A line of text under its system name: one to type into, or one that only shows.
  QLineEdit* MakeField(const char* name, Access access = Access::kTyped);
  // A box of a few lines to type into; Tab leaves it.
  QPlainTextEdit* MakeTextBox(const char* name);
  // The words before a field, whose mnemonic leads to it.
  QLabel* MakeLabel(const QString& words, QWidget* field);
  // A grid of labels and fields; AddRow puts a label before a field, or before a row of several.
  static QGridLayout* MakeForm();
  static void AddRow(QGridLayout* form, QLabel* label, QWidget* field);
  static void AddRow(QGridLayout* form, QLabel* label, QLayout* fields);
  QPushButton* MakeButton(const char* name, const QString& caption, const QString& tooltip);
  // Help at the left, Back and the button that does it all at the right.
  QBoxLayout* MakeButtonRow(QPushButton* main_button);

  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void ShowHelp();

  int help_context_;
};

// The widget that option windows stand before: the main window, or nothing where there is none.
QWidget* ParentOfOptions();

// Brings the window that is open to the front, or shows a new one.
template <typename Dialog>
void ShowOptionDialog();

bool RaiseOptionDialog(const QString& system_name);

template <typename Dialog>
void ShowOptionDialog() {
  if (!RaiseOptionDialog(QLatin1String(Dialog::kName))) (new Dialog(ParentOfOptions()))->ShowModally();
}

}  // namespace zelmar
