// Global tables and the database's title.
#include "store/reference_tables.h"

#include "store/database_info.h"
#include "store/store_fixture.h"

namespace zelmar::testing_support {
namespace {

class ReferenceTables : public StoreTest {
 protected:
  void AddInstrument(int number, const QString& name) const {
    database.AddRow(QStringLiteral("tblInstruments"), {number, name, QStringLiteral("Strings"), true, 5,
                                                       QStringLiteral("A7"), QStringLiteral("G3")});
  }
  void LoseDatabase() const { Global().DatabasePath = QStringLiteral("nowhere.mdb"); }
};

TEST_F(ReferenceTables, InstrumentsStandUnderTheirNumbers) {
  AddInstrument(0, QStringLiteral("Piano"));
  AddInstrument(128, QStringLiteral("Drum Kit"));
  database.AddRow(QStringLiteral("tblInstruments"),
                  {7, QStringLiteral("Clavi"), QStringLiteral("Keys"), false, 3, QVariant(), QVariant()});
  LoadInstrumentTable();
  EXPECT_EQ(Global().InstrumentNames[0], QStringLiteral("Piano"));
  EXPECT_EQ(Global().InstrumentNames[128], QStringLiteral("Drum Kit"));
  EXPECT_TRUE(Global().InstrumentFavourite[128]);
  EXPECT_FALSE(Global().InstrumentFavourite[7]);
  EXPECT_EQ(Global().InstrumentFamily[7], QStringLiteral("Keys"));
  EXPECT_EQ(Global().InstrumentBestOctave[7], 3);
  EXPECT_TRUE(Global().InstrumentNames[1].isEmpty());
}

TEST_F(ReferenceTables, AnInstrumentNumberAbove128IsOutOfRange) {
  AddInstrument(129, QStringLiteral("Kazoo"));
  EXPECT_THROW(LoadInstrumentTable(), SubscriptError);
  database.Execute(QStringLiteral("UPDATE tblInstruments SET InstrumentNo = -1"));
  EXPECT_THROW(LoadInstrumentTable(), SubscriptError);
}

TEST_F(ReferenceTables, WithoutADatabaseInstrumentsStayAsTheyAre) {
  Global().InstrumentNames[3] = QStringLiteral("kept");
  LoseDatabase();
  LoadInstrumentTable();
  EXPECT_TRUE(Global().DatabaseFailed);
  EXPECT_EQ(Global().InstrumentNames[3], QStringLiteral("kept"));
}

TEST_F(ReferenceTables, TheBankOfTheModeIsLoadedInTableOrder) {
  const struct {
    const char16_t* mode;
    const char16_t* table;
  } modes[] = {{u"GS", u"tblGSToneBank"}, {u"XG", u"tblXGToneBank"}, {u"GM2", u"tblGM2ToneBank"}};
  for (const auto& mode : modes) {
    const QString table = QString::fromUtf16(mode.table);
    database.AddRow(table, {9, 1, 2, table + QStringLiteral(" first")});
    database.AddRow(table, {3, 4, 5, QStringLiteral("second")});
    Global().MidiMode = QString::fromUtf16(mode.mode);
    LoadToneBank();
    ASSERT_EQ(Global().TheToneBanks->Count(), 2);
    const auto& bank = *Global().TheToneBanks->Item(1);
    EXPECT_EQ(bank.Patch(), 9);
    EXPECT_EQ(bank.BankName(), table + QStringLiteral(" first"));
    EXPECT_EQ(bank.BankLSB(), 1);
    EXPECT_EQ(bank.BankMSB(), 2);
    EXPECT_EQ(Global().TheToneBanks->Item(2)->Patch(), 3);
  }
}

TEST_F(ReferenceTables, OtherModesAndAFailedDatabaseHaveAnEmptyBank) {
  database.AddRow(QStringLiteral("tblGSToneBank"), {9, 1, 2, QStringLiteral("x")});
  Global().MidiMode = QStringLiteral("GS");
  LoadToneBank();
  EXPECT_EQ(Global().TheToneBanks->Count(), 1);
  Global().MidiMode = QStringLiteral("GM");
  LoadToneBank();
  EXPECT_EQ(Global().TheToneBanks->Count(), 0);
  Global().MidiMode = QStringLiteral("GS");
  LoadToneBank();
  LoseDatabase();
  LoadToneBank();
  EXPECT_EQ(Global().TheToneBanks->Count(), 0);
}

TEST_F(ReferenceTables, TheDatabaseTellsItsTitle) {
  for (const char16_t separator : {u'/', u'\\'}) {
    Global().DatabasePath = database.Directory() + separator + QStringLiteral("Sample.mdb");
    const auto info = FindDBInfo();
    ASSERT_TRUE(info);
    EXPECT_EQ(info->file_name, QStringLiteral("Sample.mdb"));
    EXPECT_EQ(info->title, QStringLiteral("Sample Tunes"));
    EXPECT_EQ(info->description, QStringLiteral("For tests"));
    EXPECT_EQ(Global().DatabaseTitle, QStringLiteral("Sample Tunes"));
  }
}

TEST_F(ReferenceTables, ANullTitleAndDescriptionAreEmpty) {
  database.Execute(QStringLiteral("UPDATE tblDBInfo SET Title = NULL, Description = NULL"));
  Global().DatabaseTitle = QStringLiteral("Old");
  const auto info = FindDBInfo();
  ASSERT_TRUE(info);
  EXPECT_EQ(info->file_name, QStringLiteral("Sample.mdb"));
  EXPECT_TRUE(info->title.isEmpty());
  EXPECT_TRUE(info->description.isEmpty());
  EXPECT_TRUE(Global().DatabaseTitle.isEmpty());
}

TEST_F(ReferenceTables, TheTitleIsSavedInPlace) {
  SaveDBInfo(QStringLiteral("New"), QStringLiteral("It's new"));
  EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM tblDBInfo")), QStringList(QStringLiteral("New|It's new")));
}

TEST_F(ReferenceTables, WithoutADatabaseThereIsNoTitle) {
  Global().DatabaseTitle = QStringLiteral("kept");
  LoseDatabase();
  EXPECT_FALSE(FindDBInfo());
  SaveDBInfo(QStringLiteral("New"), QStringLiteral("text"));
  EXPECT_EQ(platform.messages->shown.size(), 2);
  EXPECT_EQ(Global().DatabaseTitle, QStringLiteral("kept"));
}

TEST_F(ReferenceTables, ATitleTableWithoutARowIsAFailure) {
  database.Execute(QStringLiteral("delete * from tblDBInfo"));
  EXPECT_EQ(FailureNumber([] { FindDBInfo(); }), database_error::kNoCurrentRecord);
  EXPECT_EQ(FailureNumber([] { SaveDBInfo({}, {}); }), database_error::kNoCurrentRecord);
}

}  // namespace
}  // namespace zelmar::testing_support
