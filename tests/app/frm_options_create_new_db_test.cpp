// A new database: its steps, the names that it may have, and what is left when it cannot be made.
#include "app/options/frm_options_create_new_db.h"

#include <QProgressBar>

#include "app/option_windows_fixture.h"
#include "platform/paths.h"
#include "store/recordset.h"
#include "support/full_disk.h"

namespace zelmar {
namespace {

using namespace testing_support;

class NewDatabase : public OptionWindowTest {
 protected:
  NewDatabase() {
    database_.AddRow(QStringLiteral("tblComposer"),
                     {QStringLiteral("Bach"), QStringLiteral("Johann Sebastian"), 1685, 1750,
                      QStringLiteral("Germany"), QStringLiteral("Baroque")});
    database_.AddRow(QStringLiteral("tblCategory"), {QStringLiteral("March"), QStringLiteral("To walk to")});
    database_.AddRow(QStringLiteral("tblStyles"),
                     {QStringLiteral("Baroque"), 1600, 1750, QStringLiteral("x")});
    database_.AddRow(QStringLiteral("tblEnsemble"), {QStringLiteral("Trio")});
    database_.AddRow(QStringLiteral("tblCountry"),
                     {QStringLiteral("Germany"), QStringLiteral("Berlin"), 1, 2});
    QFile::copy(database_.Path(), Template());
    before_path_ = database_.Path();
    Start();
    Global().DatabaseTitle = QStringLiteral("Old title");
  }

  QString Template() const { return In(QStringLiteral("ZelmarTemplate.mdb")); }
  FrmOptionsCreateNewDB& Open() { return Opened<FrmOptionsCreateNewDB>("mnuOptionsCreateNewDB"); }
  static bool IsShown() { return IsOpen("frmOptionsCreateNewDB"); }

  static QList<QVariantList> Rows(const QString& path, const char* table) {
    const auto rows = Recordset::OpenTable(Connection::Open(path), QLatin1String(table));
    QList<QVariantList> found;
    for (; !rows->Eof(); rows->MoveNext()) {
      QVariantList row;
      for (int field = 0; field < rows->FieldCount(); ++field) row.append(rows->Value(field));
      found.append(row);
    }
    return found;
  }

  // The old database is the one in use, and the folder holds what it held.
  void ExpectNothingChanged(const QStringList& files_before, const QByteArray& settings_before) const {
    EXPECT_EQ(Global().DatabasePath, before_path_);
    EXPECT_EQ(Global().DatabaseTitle, QStringLiteral("Old title"));
    EXPECT_EQ(Global().DatabaseChangePerson, QStringLiteral("Ann"));
    EXPECT_FALSE(Global().DatabaseFailed);
    EXPECT_EQ(Files(), files_before);
    EXPECT_EQ(BytesOf(PathFile()), settings_before);
    EXPECT_TRUE(IsShown());
  }

  // Presses Create under a name that cannot be used; the message begins with `words`.
  void ExpectRefused(const QString& name, const QString& words) {
    auto& window = Open();
    const QStringList files = Files();
    const QByteArray settings = BytesOf(PathFile());
    platform_.messages->shown.clear();
    Type(window, "txtDBName", name);
    Click(window, "cmdCreate");
    ASSERT_EQ(Boxes().size(), 1) << qPrintable(name);
    EXPECT_EQ(Boxes()[0].icon, MessageIcon::kExclamation);
    EXPECT_EQ(Boxes()[0].title, QStringLiteral("Database not created"));
    EXPECT_TRUE(Boxes()[0].text.startsWith(words)) << qPrintable(Boxes()[0].text);
    EXPECT_TRUE(Boxes()[0].text.endsWith(
        QStringLiteral(" No database was made; the one in use is still %1.").arg(before_path_)));
    ExpectNothingChanged(files, settings);
  }

  QString before_path_;
};

TEST_F(NewDatabase, HasItsWordsAndItsStandardsTicked) {
  const auto& window = Open();
  EXPECT_TRUE(window.isModal());
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Create a new themes database"));
  EXPECT_EQ(FieldText(window, "txtDBName"), QStringLiteral("MyNewDB"));
  const std::pair<const char*, const char*> boxes[] = {{"chkComposers", "Standard composers"},
                                                       {"chkCategories", "Standard categories"},
                                                       {"chkPeriods", "Standard periods"},
                                                       {"chkEnsembles", "Standard ensembles"},
                                                       {"chkCountries", "Standard countries"}};
  for (const auto& [name, words] : boxes) {
    const auto& box = Find<QCheckBox>(window, name);
    EXPECT_EQ(Words(box.text()), QLatin1String(words));
    EXPECT_TRUE(box.isChecked()) << name;
  }
}

TEST_F(NewDatabase, CreateMakesItAndGoesOverToIt) {
  auto& window = Open();
  Type(window, "txtPerson", QStringLiteral("Bob"));
  Type(window, "txtTitle", QStringLiteral("My title"));
  Find<QPlainTextEdit>(window, "txtDescription").setPlainText(QStringLiteral("Of my own"));
  Click(window, "cmdCreate");
  const QString path = In(QStringLiteral("MyNewDB.mdb"));
  EXPECT_EQ(Global().DatabasePath, ApplicationDirectory() + QStringLiteral("\\MyNewDB.mdb"));
  EXPECT_EQ(ResolvePath(Global().DatabasePath), path);
  EXPECT_EQ(Global().DatabaseTitle, QStringLiteral("My title"));
  EXPECT_EQ(Rows(path, "tblDBInfo"),
            (QList<QVariantList>{{QStringLiteral("My title"), QStringLiteral("Of my own")}}));
  EXPECT_EQ(Rows(path, "tblMelodies").size(), 2);
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_EQ(Boxes()[0].text, QStringLiteral("Completed creation of new database My title"));
  EXPECT_FALSE(IsShown());
  EXPECT_FALSE(Files().contains(QStringLiteral("MyNewDB.mdb.part")));
}

TEST_F(NewDatabase, ThePathFileTellsOfTheChange) {
  auto& window = Open();
  Type(window, "txtPerson", QStringLiteral("Bob"));
  platform_.clock->SetSeconds(3723.5);
  Click(window, "cmdCreate");
  EXPECT_EQ(Global().DatabaseChangePerson, QStringLiteral("Bob"));
  EXPECT_EQ(Global().DatabaseChangeComment, QStringLiteral("New database"));
  EXPECT_EQ(Global().DatabaseChangeDate, QDate::currentDate());
  EXPECT_EQ(Global().DatabaseChangeTime, QTime(1, 2, 3));
  const auto records = Records();
  ASSERT_EQ(records.size(), 4);
  EXPECT_EQ(records[0], '"' + database_.Directory().toUtf8() + "\\MyNewDB.mdb\",#" +
                            QDate::currentDate().toString(Qt::ISODate).toUtf8() +
                            "#,#01:02:03#,\"Bob\",\"New database\"");
  EXPECT_EQ(records[1], "\"Midi output device\",0,\"Recorder\"");
  EXPECT_EQ(records[2], "\"Media player info\",#FALSE#");
  EXPECT_EQ(records[3], "\"Midi mode\",\"GS\"");
}

TEST_F(NewDatabase, TickedTablesKeepTheRowsOfTheTemplate) {
  Click(Open(), "cmdCreate");
  for (const char* table : {"tblComposer", "tblCategory", "tblStyles", "tblEnsemble", "tblCountry"})
    EXPECT_EQ(Rows(Global().DatabasePath.replace(u'\\', u'/'), table), Rows(Template(), table)) << table;
}

TEST_F(NewDatabase, WithAllTicksTakenAwayEachTableHoldsOneRow) {
  auto& window = Open();
  for (const char* box : {"chkComposers", "chkCategories", "chkPeriods", "chkEnsembles", "chkCountries"})
    Find<QCheckBox>(window, box).setChecked(false);
  Click(window, "cmdCreate");
  const QString path = In(QStringLiteral("MyNewDB.mdb"));
  const auto text = [](const char* words) { return QVariant(QString::fromLatin1(words)); };
  EXPECT_EQ(Rows(path, "tblComposer"), (QList<QVariantList>{{text("Empty"), text("No composers"), 0, 0,
                                                             text("No country"), text("No style")}}));
  EXPECT_EQ(Rows(path, "tblCategory"), (QList<QVariantList>{{text("Empty"), text("No categories")}}));
  EXPECT_EQ(Rows(path, "tblStyles"), (QList<QVariantList>{{text("Empty"), 0, 0, text("No styles")}}));
  EXPECT_EQ(Rows(path, "tblEnsemble"), (QList<QVariantList>{{text("Empty")}}));
  EXPECT_EQ(Rows(path, "tblCountry"), (QList<QVariantList>{{text("Empty"), text("No countries"), 0, 0}}));
}

TEST_F(NewDatabase, OneTickTakenAwayEmptiesOnlyItsTable) {
  const std::pair<const char*, const char*> rows[] = {{"chkComposers", "tblComposer"},
                                                      {"chkCategories", "tblCategory"},
                                                      {"chkPeriods", "tblStyles"},
                                                      {"chkEnsembles", "tblEnsemble"},
                                                      {"chkCountries", "tblCountry"}};
  for (const auto& [box, emptied] : rows) {
    auto& window = Open();
    Type(window, "txtDBName", QLatin1String(box));
    Find<QCheckBox>(window, box).setChecked(false);
    Click(window, "cmdCreate");
    LetClosedWindowsGo();
    const QString path = In(QLatin1String(box) + QStringLiteral(".mdb"));
    for (const auto& [other, table] : rows)
      EXPECT_EQ(Rows(path, table) == Rows(Template(), table), QLatin1String(table) != QLatin1String(emptied))
          << box << ' ' << table;
  }
}

TEST_F(NewDatabase, TheTemplateAndTheOldDatabaseStayAsTheyAre) {
  const QByteArray old_template = BytesOf(Template());
  auto& window = Open();
  Find<QCheckBox>(window, "chkComposers").setChecked(false);
  Type(window, "txtTitle", QStringLiteral("New"));
  Click(window, "cmdCreate");
  EXPECT_EQ(BytesOf(Template()), old_template);
  EXPECT_EQ(database_.Column(QStringLiteral("SELECT Title FROM tblDBInfo")),
            QStringList{QStringLiteral("Sample Tunes")});
}

TEST_F(NewDatabase, NamesWithSignsOfTheirOwnAreGood) {
  for (const QString& name :
       {QStringLiteral("Ann's tunes"), QStringLiteral("[mine]"), QStringLiteral("50% & more; --"),
        QStringLiteral("L\u00e4ndler \u266b"), QStringLiteral("v1.2")}) {
    platform_.messages->shown.clear();
    auto& window = Open();
    Type(window, "txtDBName", name);
    Type(window, "txtTitle", name);
    Click(window, "cmdCreate");
    LetClosedWindowsGo();
    EXPECT_EQ(Rows(In(name + QStringLiteral(".mdb")), "tblDBInfo")[0][0].toString(), name);
    EXPECT_EQ(Boxes().size(), 1);
    ResetGlobals();
    ReadPathFileIntoGlobals(PathFile());
    EXPECT_EQ(ResolvePath(Global().DatabasePath), In(name + QStringLiteral(".mdb")));
  }
}

TEST_F(NewDatabase, ANameOfBlanksIsRefused) {
  for (const QString& name : {QString(), QStringLiteral(" "), QStringLiteral("    ")})
    ExpectRefused(name, QStringLiteral("Please type a name for the new database."));
}

TEST_F(NewDatabase, ANameOf300SignsIsRefused) {
  ExpectRefused(QString(300, u'a'), QStringLiteral("The name of the database is too long."));
  ExpectRefused(QString(200, QChar(0x00E4)), QStringLiteral("The name of the database is too long."));
}

TEST_F(NewDatabase, ANameThatLeadsElsewhereIsRefused) {
  for (const char* name : {"../Other", "..\\Other", "/tmp/Other", "sub/Other", "C:Other", "a*b", "a\"b"})
    ExpectRefused(QLatin1String(name),
                  QStringLiteral("The name of a database cannot hold any of the signs "));
  ExpectRefused(QStringLiteral("a\nb"),
                QStringLiteral("The name of a database cannot hold any of the signs "));
}

TEST_F(NewDatabase, ADatabaseThatIsThereIsNeverWrittenOver) {
  const QByteArray old = BytesOf(database_.Path());
  ExpectRefused(QStringLiteral("Sample"),
                QStringLiteral("There is a file Sample.mdb already. Please choose another name."));
  ExpectRefused(QStringLiteral("SAMPLE"), QStringLiteral("There is a file SAMPLE.mdb already."));
  ExpectRefused(QStringLiteral("ZelmarTemplate"),
                QStringLiteral("There is a file ZelmarTemplate.mdb already."));
  EXPECT_EQ(BytesOf(database_.Path()), old);
}

TEST_F(NewDatabase, AMissingTemplateIsTold) {
  QFile::remove(Template());
  ExpectRefused(QStringLiteral("New"), QStringLiteral("The template %1 is missing.").arg(Template()));
}

TEST_F(NewDatabase, AFolderThatIsProtectedIsTold) {
  auto& window = Open();
  const QStringList files = Files();
  const QByteArray settings = BytesOf(PathFile());
  const auto rights = QFile::permissions(database_.Directory());
  ASSERT_TRUE(QFile::setPermissions(database_.Directory(), QFileDevice::Permissions(0x5555)));
  {
    const PlainUser user;
    Click(window, "cmdCreate");
  }
  QFile::setPermissions(database_.Directory(), rights);
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(Boxes()[0].text.startsWith(
      QStringLiteral("The file %1 cannot be made: ").arg(In(QStringLiteral("MyNewDB.mdb")))))
      << qPrintable(Boxes()[0].text);
  ExpectNothingChanged(files, settings);
}

TEST_F(NewDatabase, ADiskThatFillsDuringTheCopyLeavesNothingBehind) {
  auto& window = Open();
  const QStringList files = Files();
  const QByteArray settings = BytesOf(PathFile());
  ASSERT_GT(QFileInfo(Template()).size(), 40000);
  {
    const FullDisk disk(40000);
    Click(window, "cmdCreate");
  }
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(Boxes()[0].text.startsWith(
      QStringLiteral("The file %1 cannot be made: ").arg(In(QStringLiteral("MyNewDB.mdb")))));
  ExpectNothingChanged(files, settings);
  // With room again, the same click goes well.
  Click(window, "cmdCreate");
  EXPECT_TRUE(QFile::exists(In(QStringLiteral("MyNewDB.mdb"))));
}

TEST_F(NewDatabase, ATemplateThatIsNoDatabaseLeavesNothingBehind) {
  WriteBytes(Template(), QByteArray(20000, 'x'));
  auto& window = Open();
  const QStringList files = Files();
  const QByteArray settings = BytesOf(PathFile());
  Click(window, "cmdCreate");
  ASSERT_EQ(Boxes().size(), 2);
  EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral(" is not a database.   Please go to")));
  EXPECT_TRUE(Boxes()[1].text.startsWith(QStringLiteral("The new database cannot be used: The file ")));
  ExpectNothingChanged(files, settings);
}

TEST_F(NewDatabase, AFailureAfterTheCopyLeavesNothingBehind) {
  Connection::Open(Template())->Execute(QStringLiteral("DROP TABLE tblEnsemble"));
  auto& window = Open();
  const QStringList files = Files();
  const QByteArray settings = BytesOf(PathFile());
  Find<QCheckBox>(window, "chkEnsembles").setChecked(false);
  Click(window, "cmdCreate");
  ASSERT_EQ(Boxes().size(), 1);
  EXPECT_TRUE(Boxes()[0].text.contains(QStringLiteral("tblEnsemble")));
  ExpectNothingChanged(files, settings);
}

TEST_F(NewDatabase, SettingsThatCannotBeWrittenAreToldAndTheDatabaseStays) {
  auto& window = Open();
  QFile::remove(PathFile());
  QDir().mkdir(PathFile());
  Click(window, "cmdCreate");
  ASSERT_EQ(Boxes().size(), 2);
  EXPECT_EQ(Boxes()[0].title, QStringLiteral("Settings not saved"));
  EXPECT_TRUE(QFile::exists(In(QStringLiteral("MyNewDB.mdb"))));
}

TEST_F(NewDatabase, TheProgressIsShownAndTheWindowStaysUntilTheEndOfTheCopy) {
  auto& window = Open();
  bool served = false;
  platform_.events->on_serve = [&](int) {
    if (served) return;
    served = true;
    const auto& bar = Find<QProgressBar>(window, "MyProgressBar");
    EXPECT_TRUE(bar.isVisible());
    EXPECT_GT(bar.value(), 0);
    EXPECT_FALSE(IsEnabled(window, "cmdCreate"));
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible());
  };
  Click(window, "cmdCreate");
  platform_.events->on_serve = {};
  EXPECT_TRUE(served);
  EXPECT_FALSE(IsShown());
}

TEST_F(NewDatabase, BackAndEscapeMakeNothing) {
  const QStringList files = Files();
  Click(Open(), "cmdBack");
  LetClosedWindowsGo();
  QTest::keyClick(&Open(), Qt::Key_Escape);
  EXPECT_FALSE(IsShown());
  EXPECT_EQ(Files(), files);
  EXPECT_EQ(Global().DatabasePath, before_path_);
}

TEST_F(NewDatabase, TheFrontPageNamesTheNewDatabase) {
  auto& window = Open();
  Type(window, "txtTitle", QStringLiteral("Brand new"));
  Click(window, "cmdCreate");
  EXPECT_EQ(TextOf(Front(), "lblDatabaseTitle"), QStringLiteral("Brand new"));
}

}  // namespace
}  // namespace zelmar
