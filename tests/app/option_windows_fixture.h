// A main window with a path file, and short ways to look at what an option window has done.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <set>

#include "app/main_window_fixture.h"
#include "model/path_file.h"
#include "model/tune.h"
#include "shell/modal_dialog.h"
#include "support/plain_user.h"

namespace zelmar {

using testing_support::PlainUser;

class OptionWindowTest : public MainWindowTest {
 protected:
  OptionWindowTest();

  // Writes the path file from the globals as they are.
  void WriteSettings() const { WritePathFile(PathFile(), PathFileWriter::kMidiSetup); }
  QString PathFile() const { return In(QStringLiteral("frmPath.txt")); }
  QString In(const QString& name) const { return database_.Directory() + QLatin1Char('/') + name; }
  static QByteArray BytesOf(const QString& path);
  static void WriteBytes(const QString& path, const QByteArray& bytes);
  // The records of the path file.
  QList<QByteArray> Records() const { return BytesOf(PathFile()).trimmed().split('\n'); }
  // What lies in the application directory.
  QStringList Files() const;

  // The dialogue that a menu item has shown.
  template <typename Dialog>
  Dialog& Opened(const char* item) {
    Item(item).trigger();
    QCoreApplication::processEvents();
    auto* dialog = qobject_cast<Dialog*>(FindLoadedForm(QLatin1String(Dialog::kName)));
    if (dialog == nullptr) throw std::runtime_error(std::string("no window after ") + item);
    return *dialog;
  }
  static bool IsOpen(const char* name) { return FindLoadedForm(QLatin1String(name)) != nullptr; }

  static QString FieldText(const QObject& window, const char* name) {
    return testing_support::Find<QLineEdit>(window, name).text();
  }
  static void Type(const QObject& window, const char* name, const QString& text) {
    testing_support::Find<QLineEdit>(window, name).setText(text);
  }
  // The words of a control as a reader sees them, without the mark of the mnemonic.
  static QString Words(QString text) { return text.remove(QLatin1Char('&')); }

  // The notes that sound after all that was sent.
  std::set<std::uint32_t> Sounding() const;
  std::vector<std::uint32_t> PitchesOn() const;
};

}  // namespace zelmar
