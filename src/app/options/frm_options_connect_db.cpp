#include "app/options/frm_options_connect_db.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/options/database_change.h"
#include "app/options/save_settings.h"
#include "model/globals.h"
#include "platform/failure.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "platform/widgets/spacing.h"
#include "shell/unsaved_changes.h"
#include "shell/window_catalogue.h"
#include "store/connect_database.h"
#include "store/connection.h"
#include "store/database_info.h"
#include "store/failure_words.h"

namespace zelmar {

namespace {

constexpr int kWidth = 620;
constexpr int kShortField = 120;

}  // namespace

FrmOptionsConnectDB::FrmOptionsConnectDB(QWidget* parent)
    : ModalDialog(QLatin1String(kName), QStringLiteral("Connect database"), parent) {
  MakeControls();
  ArrangeControls();
  Load();
  cmdChangePath_->setFocus();
  resize(kWidth, sizeHint().height());
}

void FrmOptionsConnectDB::ShowAndWait() {
  FrmOptionsConnectDB window(ParentOfDialogs());
  window.exec();
}

void FrmOptionsConnectDB::MakeControls() {
  txtCurrentPath_ = MakeField("txtCurrentPath", Access::kShown);
  cmdChangePath_ = MakeButton("cmdChangePath", QStringLiteral("&Change Path to Database"),
                              tr("Choose another database file"));
  connect(cmdChangePath_, &QPushButton::clicked, this, &FrmOptionsConnectDB::cmdChangePath_Click);
  txtDate_ = MakeField("txtDate", Access::kShown);
  txtTime_ = MakeField("txtTime", Access::kShown);
  for (QLineEdit* field : {txtDate_, txtTime_}) field->setFixedWidth(kShortField);
  txtPerson_ = MakeField("txtPerson");
  txtComments_ = MakeField("txtComments");
  txtFileName_ = MakeField("txtFileName", Access::kShown);
  txtTitle_ = MakeField("txtTitle");
  txtDescription_ = MakeTextBox("txtDescription");
  lblState_ = new QLabel(this);
  lblState_->setObjectName(QStringLiteral("lblState"));
  lblState_->setTextFormat(Qt::PlainText);
  lblState_->setWordWrap(true);
  QFont bold = lblState_->font();
  bold.setBold(true);
  lblState_->setFont(bold);
  lblState_->hide();
  cmdQuit_ =
      MakeButton("cmdQuit", QStringLiteral("&Save and Quit"), tr("Keep this database for the next start"));
  connect(cmdQuit_, &QPushButton::clicked, this, &FrmOptionsConnectDB::cmdQuit_Click);
}

void FrmOptionsConnectDB::ArrangeControls() {
  auto* path = new QHBoxLayout;
  path->setSpacing(spacing::kSmall);
  path->addWidget(txtCurrentPath_, 1);
  path->addWidget(cmdChangePath_);
  auto* moment = new QHBoxLayout;
  moment->setSpacing(spacing::kSmall);
  moment->addWidget(txtDate_);
  moment->addWidget(txtTime_);
  moment->addStretch(1);
  auto* form = MakeForm();
  AddRow(form, MakeLabel(tr("Current path"), txtCurrentPath_), path);
  AddRow(form, MakeLabel(tr("Chosen on"), txtDate_), moment);
  AddRow(form, MakeLabel(tr("Chosen b&y"), txtPerson_), txtPerson_);
  AddRow(form, MakeLabel(tr("Co&mments"), txtComments_), txtComments_);
  AddRow(form, MakeLabel(tr("File name"), txtFileName_), txtFileName_);
  AddRow(form, MakeLabel(tr("&Title"), txtTitle_), txtTitle_);
  AddRow(form, MakeLabel(tr("&Description"), txtDescription_), txtDescription_);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(spacing::kWide, spacing::kWide, spacing::kWide, spacing::kLarge);
  column->setSpacing(spacing::kMedium);
  column->addLayout(form);
  column->addWidget(lblState_);
  column->addStretch(1);
  column->addLayout(MakeButtonRow(cmdQuit_));
}

void FrmOptionsConnectDB::Load() {
  try {
    ReadPathFileIntoGlobals(ApplicationDirectory() + QLatin1Char('/') + kPathFileName);
  } catch (const Failure& failure) {
    ShowMessage(MessageIcon::kExclamation, failure.Description());
  }
  ShowChange();
  txtPerson_->setText(Global().DatabaseChangePerson);
  txtComments_->setText(Global().DatabaseChangeComment);
  if (Global().DatabaseFailed)
    SayTrouble(ConnectFailureWords());
  else
    FindInfo();
}

void FrmOptionsConnectDB::SayTrouble(const QString& trouble) {
  lblState_->setText(trouble);
  lblState_->setVisible(!trouble.isEmpty());
}

void FrmOptionsConnectDB::ShowChange() {
  const Globals& globals = Global();
  txtCurrentPath_->setText(globals.DatabasePath);
  txtCurrentPath_->setToolTip(globals.DatabasePath);
  txtDate_->setText(QLocale().toString(globals.DatabaseChangeDate, QLocale::ShortFormat));
  txtTime_->setText(globals.DatabaseChangeTime.toString(QStringLiteral("hh:mm:ss")));
}

void FrmOptionsConnectDB::FindInfo() {
  info_read_ = false;
  QString trouble;
  DatabaseInfo found;
  try {
    if (const auto info = FindDBInfo()) {
      found = *info;
      info_read_ = true;
    } else {
      trouble = ConnectFailureWords();
    }
  } catch (const Failure& failure) {
    trouble = failure.Description();
  }
  title_read_ = found.title;
  description_read_ = found.description;
  txtFileName_->setText(found.file_name);
  txtTitle_->setText(found.title);
  txtDescription_->setPlainText(found.description);
  if (!Global().DatabaseFailed) {
    const QString warning = Warning();
    if (!warning.isEmpty()) trouble = warning;
    if (!trouble.isEmpty())
      ShowMessage(MessageIcon::kExclamation, trouble, QStringLiteral("Database not whole"));
    // Of this a box has told.
    if (trouble.isEmpty()) trouble = found.read_only_words;
  }
  SayTrouble(trouble);
}

// What a database that opens lacks; empty when it is whole.
QString FrmOptionsConnectDB::Warning() const {
  const QStringList missing = MissingTables();
  if (missing.isEmpty()) return {};
  return QStringLiteral("%1 is a database and lacks tables that Zelmar needs: %2.")
      .arg(Global().DatabasePath, missing.join(QStringLiteral(", ")));
}

void FrmOptionsConnectDB::cmdChangePath_Click() {
  const QString chosen = ChooseFile(FileChoice::kOpen, QStringLiteral("Choose Zelmar Data Base"),
                                    QStringLiteral("Database Files (*.MDB)|*.MDB"), Global().DatabasePath);
  if (chosen.isEmpty()) {
    ShowMessage(MessageIcon::kExclamation,
                QStringLiteral("Please select a valid DOS path for the Zelmar Database"));
    return;
  }
  // What is unsaved belongs to the database before. A person may leave this window while that is saved.
  if (chosen != Global().DatabasePath && (!MayReplaceTune() || !isVisible())) return;
  Global().DatabasePath = chosen;
  NoteDatabaseChange();
  ShowChange();
  FindInfo();
}

void FrmOptionsConnectDB::cmdQuit_Click() {
  Global().DatabaseChangePerson = txtPerson_->text();
  Global().DatabaseChangeComment = txtComments_->text();
  SaveSettings(PathFileWriter::kConnectDatabase);
  SaveInfo();
  accept();
  ShowWindow(QStringLiteral("frmFront"));
  RenewFrontWindow();
}

void FrmOptionsConnectDB::SaveInfo() {
  const QString title = txtTitle_->text();
  const QString description = txtDescription_->toPlainText();
  // What was never read must not be written over: the boxes are empty then.
  if (!info_read_ && title.isEmpty() && description.isEmpty()) {
    std::shared_ptr<Connection> connection;
    ConnectDatabase(connection);
    return;
  }
  try {
    SaveDBInfo(title, description);
    if (!Global().DatabaseFailed) Global().DatabaseTitle = title;
  } catch (const Failure& failure) {
    // A database that cannot be changed loses nothing when there is nothing new.
    if (title == title_read_ && description == description_read_) return;
    ShowMessage(MessageIcon::kExclamation,
                QStringLiteral("The title and the description could not be saved: ") +
                    WordsForPerson(failure) + QStringLiteral(" The database keeps those that it had."),
                QStringLiteral("Database not changed"));
  }
}

}  // namespace zelmar
