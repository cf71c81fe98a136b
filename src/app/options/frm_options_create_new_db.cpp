#include "app/options/frm_options_create_new_db.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
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
#include "store/connect_database.h"
#include "store/connection.h"
#include "store/failure_words.h"

namespace zelmar {

namespace {

constexpr int kWidth = 560;

// What is told when there is no new database.
void SayNotMade(const QString& why) {
  ShowMessage(
      MessageIcon::kExclamation,
      why + QStringLiteral(" No database was made; the one in use is still %1.").arg(Global().DatabasePath),
      QStringLiteral("Database not created"));
}

}  // namespace

FrmOptionsCreateNewDB::FrmOptionsCreateNewDB(QWidget* parent)
    : ModalDialog(QLatin1String(kName), QStringLiteral("Create a new themes database"), parent) {
  MakeControls();
  ArrangeControls();
  txtDBName_->setFocus();
  txtDBName_->selectAll();
  resize(kWidth, sizeHint().height());
}

void FrmOptionsCreateNewDB::MakeControls() {
  txtDBName_ = MakeField("txtDBName");
  txtDBName_->setText(QStringLiteral("MyNewDB"));
  txtDBName_->setToolTip(tr("The name of the file, without its ending"));
  txtPerson_ = MakeField("txtPerson");
  txtTitle_ = MakeField("txtTitle");
  txtDescription_ = MakeTextBox("txtDescription");
  const auto box = [this](const char* name, const char* caption) {
    auto* made = new QCheckBox(QLatin1String(caption), this);
    made->setObjectName(QLatin1String(name));
    made->setChecked(true);
    return made;
  };
  chkComposers_ = box("chkComposers", "Standard co&mposers");
  chkCategories_ = box("chkCategories", "Standard cate&gories");
  chkPeriods_ = box("chkPeriods", "Standard pe&riods");
  chkEnsembles_ = box("chkEnsembles", "Standard &ensembles");
  chkCountries_ = box("chkCountries", "Standard co&untries");
  MyProgressBar_ = new QProgressBar(this);
  MyProgressBar_->setObjectName(QStringLiteral("MyProgressBar"));
  MyProgressBar_->setTextVisible(false);
  // Its place is kept, so that nothing jumps.
  QSizePolicy policy = MyProgressBar_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  MyProgressBar_->setSizePolicy(policy);
  MyProgressBar_->hide();
  cmdCreate_ = MakeButton("cmdCreate", tr("&Create"), tr("Make the database and go over to it"));
  connect(cmdCreate_, &QPushButton::clicked, this, &FrmOptionsCreateNewDB::cmdCreate_Click);
}

void FrmOptionsCreateNewDB::ArrangeControls() {
  auto* form = MakeForm();
  AddRow(form, MakeLabel(tr("&Name of the database"), txtDBName_), txtDBName_);
  AddRow(form, MakeLabel(tr("&Your name"), txtPerson_), txtPerson_);
  AddRow(form, MakeLabel(tr("&Title"), txtTitle_), txtTitle_);
  AddRow(form, MakeLabel(tr("&Description"), txtDescription_), txtDescription_);

  auto* words =
      new QLabel(tr("What the new database starts with. A list that is not ticked starts empty."), this);
  words->setWordWrap(true);
  words->setForegroundRole(QPalette::PlaceholderText);
  auto* boxes = new QGridLayout;
  boxes->setHorizontalSpacing(spacing::kWide);
  boxes->setVerticalSpacing(spacing::kSmall);
  int place = 0;
  for (QCheckBox* box : {chkComposers_, chkCategories_, chkPeriods_, chkEnsembles_, chkCountries_}) {
    boxes->addWidget(box, place / 2, place % 2);
    ++place;
  }
  boxes->setColumnStretch(1, 1);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(spacing::kWide, spacing::kWide, spacing::kWide, spacing::kLarge);
  column->setSpacing(spacing::kMedium);
  column->addLayout(form);
  column->addSpacing(spacing::kSmall);
  column->addWidget(words);
  column->addLayout(boxes);
  column->addStretch(1);
  column->addWidget(MyProgressBar_);
  column->addLayout(MakeButtonRow(cmdCreate_));
}

StandardTables FrmOptionsCreateNewDB::Standard() const {
  return {chkComposers_->isChecked(), chkCategories_->isChecked(), chkPeriods_->isChecked(),
          chkEnsembles_->isChecked(), chkCountries_->isChecked()};
}

void FrmOptionsCreateNewDB::SetWorking(bool working) {
  working_ = working;
  MyProgressBar_->setValue(0);
  MyProgressBar_->setVisible(working);
  for (QWidget* control : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
    if (control != MyProgressBar_) control->setEnabled(!working);
}

void FrmOptionsCreateNewDB::reject() {
  if (!working_) QDialog::reject();
}

void FrmOptionsCreateNewDB::cmdCreate_Click() {
  if (working_) return;
  const QString name = txtDBName_->text();
  const QString trouble = WhyNotADatabaseName(ApplicationDirectory(), name);
  if (!trouble.isEmpty()) {
    SayNotMade(trouble);
    txtDBName_->setFocus();
    txtDBName_->selectAll();
    return;
  }
  const QString target = ApplicationDirectory() + QLatin1Char('/') + name + QStringLiteral(".mdb");
  SetWorking(true);
  // What is unsaved belongs to the database before.
  const bool made = MayReplaceTune() && Copy(target) && Fill(target);
  SetWorking(false);
  if (!made) return;

  NoteDatabaseChange();
  Globals& globals = Global();
  globals.DatabaseChangePerson = txtPerson_->text();
  globals.DatabaseChangeComment = QStringLiteral("New database");
  SaveSettings(PathFileWriter::kCreateDatabase);
  ShowMessage(MessageIcon::kNone,
              QStringLiteral("Completed creation of new database ") + globals.DatabaseTitle);
  accept();
  RenewFrontWindow();
}

bool FrmOptionsCreateNewDB::Copy(const QString& target) {
  PacedServing pace;
  try {
    CopyTemplate(ApplicationDirectory() + QLatin1Char('/') + kTemplateDatabaseName, target,
                 [this, &pace](int percent) {
                   MyProgressBar_->setValue(percent);
                   pace.ServeWhenDue();
                 });
  } catch (const Failure& failure) {
    SayNotMade(failure.Description());
    return false;
  }
  return true;
}

// The old database is in use again when the new one cannot be.
bool FrmOptionsCreateNewDB::Fill(const QString& target) {
  Globals& globals = Global();
  const QString path_before = globals.DatabasePath;
  const QString title_before = globals.DatabaseTitle;
  const bool failed_before = globals.DatabaseFailed;
  globals.DatabasePath =
      ApplicationDirectory() + QLatin1Char('\\') + txtDBName_->text() + QStringLiteral(".mdb");
  std::shared_ptr<Connection> connection;
  ConnectDatabase(connection);
  QString trouble = ConnectFailureWords();
  if (!globals.DatabaseFailed) {
    globals.DatabaseTitle = txtTitle_->text();
    try {
      FillNewDatabase(connection, txtTitle_->text(), txtDescription_->toPlainText(), Standard());
      return true;
    } catch (const Failure& failure) {
      trouble = WordsForPerson(failure);
    }
  }
  connection.reset();
  RemoveDatabaseFile(target);
  globals.DatabasePath = path_before;
  globals.DatabaseTitle = title_before;
  globals.DatabaseFailed = failed_before;
  SayNotMade(QStringLiteral("The new database cannot be used: ") + trouble);
  return false;
}

}  // namespace zelmar
