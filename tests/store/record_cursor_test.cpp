// A walk through records: where it stands, how it moves, what it changes, and what becomes of it when the
// database does not play along.
#include "store/record_cursor.h"

#include "store/signal_count.h"
#include "store/store_fixture.h"
#include "support/full_disk.h"

namespace zelmar::testing_support {
namespace {

const QString kKey = QStringLiteral("COMPOSER");
const QString kFirstName = QStringLiteral("FIRST_NAME");

QString Word(const char* text) {
  return QString::fromUtf8(text);
}

class RecordCursorTest : public StoreTest {
 protected:
  RecordCursorTest() : connection(database.Connect()) {
    for (const char* row :
         {"'Mozart','Wolfgang',1756,1791,'Austria','Classical'",
          "'Bach','Johann',1685,1750,'Germany','Baroque'", "'O''Carolan','Turlough',1670,1738,'Ireland',NULL",
          "'Various',' ',0,0,NULL,NULL"})
      database.Execute(QStringLiteral("INSERT INTO tblComposer VALUES (%1)").arg(Word(row)));
  }

  static RecordSource Composers() {
    return {QStringLiteral("select * from tblComposer"), QStringLiteral("composer <> 'Various'"),
            QStringLiteral("Order by COMPOSER"), kKey};
  }
  QStringList Stored() const {
    return database.Column(QStringLiteral("SELECT COMPOSER FROM tblComposer ORDER BY COMPOSER"));
  }
  void Open(bool unlocked = false) {
    cursor.OpenAll(connection);
    if (unlocked) cursor.Unlock();
  }

  std::shared_ptr<Connection> connection;
  RecordCursor cursor{Composers(), QStringLiteral("Composer No. ")};
};

// --- Statements ---

TEST(RecordSource, AllRecordsAreThoseOfTheConditionAndOneIsThatOfItsKey) {
  const RecordSource source{QStringLiteral("select * from t"), QStringLiteral("a <> 1"),
                            QStringLiteral("ORDER BY a"), QStringLiteral("k")};
  EXPECT_EQ(source.All(), QStringLiteral("select * from t WHERE a <> 1 ORDER BY a"));
  EXPECT_EQ(source.One(Word("O'Carolan")),
            QStringLiteral("select * from t WHERE [k] = 'O''Carolan' ORDER BY a"));
  EXPECT_EQ(source.One(12), QStringLiteral("select * from t WHERE [k] = 12 ORDER BY a"));
  const RecordSource bare{QStringLiteral("select * from t"), {}, {}, QStringLiteral("k")};
  EXPECT_EQ(bare.All(), QStringLiteral("select * from t"));
}

TEST(RecordSource, ValuesStandInStatementsWithTheirApostrophesDoubled) {
  EXPECT_EQ(InStatement(Word("'; drop table t")), QStringLiteral("'''; drop table t'"));
  EXPECT_EQ(InStatement(QString(QStringLiteral(""))), QStringLiteral("''"));
  EXPECT_EQ(InStatement(qlonglong{-3}), QStringLiteral("-3"));
  EXPECT_EQ(InStatement(QVariant()), QStringLiteral("NULL"));
}

// --- Where it stands ---

TEST_F(RecordCursorTest, StandsNowhereUntilItIsOpened) {
  EXPECT_FALSE(cursor.HasRecord());
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 0 of 0"));
  EXPECT_TRUE(cursor.Value(kKey).isNull());
  EXPECT_TRUE(cursor.Keys().isEmpty());
  cursor.MoveNext();
  EXPECT_FALSE(cursor.Find(Word("Bach")));
  EXPECT_EQ(FailureNumber([&] { cursor.Refresh(); }), database_error::kNoCurrentRecord);
}

TEST_F(RecordCursorTest, AllRecordsAreThereInTheirOrderAndTheFirstIsShown) {
  Open();
  EXPECT_EQ(cursor.Text(kKey), Word("Bach"));
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 1 of 3"));
  EXPECT_EQ(cursor.Keys(), QStringList({Word("Bach"), Word("Mozart"), Word("O'Carolan")}));
  EXPECT_EQ(cursor.Position(), 1) << "looking at the keys moves nothing";
  EXPECT_EQ(cursor.Value(QStringLiteral("born")).toInt(), 1685);
  EXPECT_TRUE(cursor.YesNo(QStringLiteral("BORN")));
  EXPECT_EQ(FailureNumber([&] { cursor.Value(QStringLiteral("no_column")); }), database_error::kItemNotFound);
}

TEST_F(RecordCursorTest, OneRecordIsAloneWhateverItsNameAndWhateverTheConditionLeavesOut) {
  for (const char* name : {"O'Carolan", "Various"}) {
    cursor.OpenOne(connection, Word(name));
    EXPECT_EQ(cursor.Text(kKey), Word(name));
    EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 1 of 1"));
  }
  cursor.OpenOne(connection, Word("bach"));
  EXPECT_FALSE(cursor.HasRecord()) << "compared exactly as stored";
}

TEST_F(RecordCursorTest, AKeyCanBeANumber) {
  database.AddRow(QStringLiteral("tblInstruments"),
                  {0, Word("Piano"), Word("Keyboards"), 1, 4, Word("C8"), Word("A0")});
  database.AddRow(QStringLiteral("tblInstruments"), {40, Word("Violin"), Word("Strings"), 0, 5, {}, {}});
  RecordCursor instruments({QStringLiteral("select * from tblInstruments"),
                            {},
                            QStringLiteral("Order by InstrumentName"),
                            QStringLiteral("InstrumentNo")},
                           QStringLiteral("Instrument No. "));
  instruments.OpenOne(connection, 0);
  EXPECT_EQ(instruments.Text(QStringLiteral("InstrumentName")), Word("Piano"));
  instruments.OpenAll(connection);
  EXPECT_TRUE(instruments.Find(40));
  EXPECT_EQ(instruments.Text(QStringLiteral("InstrumentName")), Word("Violin"));
  instruments.Unlock();
  instruments.Store(QStringLiteral("Favourite"), true);
  EXPECT_TRUE(instruments.YesNo(QStringLiteral("Favourite")));
  EXPECT_EQ(database.Column(QStringLiteral("SELECT Favourite FROM tblInstruments ORDER BY InstrumentNo")),
            QStringList({QStringLiteral("1"), QStringLiteral("1")}));
}

// --- Moving ---

TEST_F(RecordCursorTest, MovesThroughTheRecords) {
  Open();
  cursor.MoveNext();
  EXPECT_EQ(cursor.Text(kKey), Word("Mozart"));
  cursor.MoveLast();
  EXPECT_EQ(cursor.Text(kKey), Word("O'Carolan"));
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 3 of 3"));
  cursor.MovePrevious();
  EXPECT_EQ(cursor.Position(), 2);
  cursor.MoveFirst();
  EXPECT_EQ(cursor.Position(), 1);
}

TEST_F(RecordCursorTest, AMovePastAnEndStaysThereAndCallsItsHook) {
  Open();
  QStringList called;
  cursor.OnPastEnd([&] { called.append(QStringLiteral("end %1").arg(cursor.Position())); });
  cursor.OnBeforeStart([&] { called.append(QStringLiteral("start %1").arg(cursor.Position())); });
  cursor.MovePrevious();
  EXPECT_EQ(cursor.Position(), 1);
  cursor.MoveLast();
  cursor.MoveNext();
  EXPECT_EQ(cursor.Position(), 3);
  EXPECT_EQ(called, QStringList({QStringLiteral("start 1"), QStringLiteral("end 3")}));
  cursor.MoveLast();
  cursor.MovePrevious();
  EXPECT_EQ(called.size(), 2) << "neither reaches nor leaves an end";
}

TEST_F(RecordCursorTest, WithoutHooksAnEndIsJustAnEnd) {
  Open();
  cursor.MovePrevious();
  EXPECT_EQ(cursor.Position(), 1);
  cursor.MoveLast();
  cursor.MoveNext();
  EXPECT_EQ(cursor.Position(), 3);
}

TEST_F(RecordCursorTest, EachMoveIsToldAndAnotherRecordOnlyWhenItIsOne) {
  const SignalCount moved(&cursor, &RecordCursor::Moved);
  const SignalCount another(&cursor, &RecordCursor::AnotherRecord);
  Open();
  EXPECT_EQ(moved.Count(), 1);
  EXPECT_EQ(another.Count(), 1);
  cursor.MovePrevious();
  EXPECT_EQ(moved.Count(), 2);
  EXPECT_EQ(another.Count(), 1);
  cursor.MoveNext();
  EXPECT_EQ(moved.Count(), 3);
  EXPECT_EQ(another.Count(), 2);
  EXPECT_TRUE(cursor.Find(Word("Mozart")));
  EXPECT_EQ(moved.Count(), 4);
  EXPECT_EQ(another.Count(), 2);
}

TEST_F(RecordCursorTest, NoRecordsAreNothingToMoveThrough) {
  cursor.OpenOne(connection, Word("Nobody"));
  int calls = 0;
  cursor.OnPastEnd([&] { ++calls; });
  cursor.OnBeforeStart([&] { ++calls; });
  cursor.MoveFirst();
  cursor.MoveNext();
  cursor.MovePrevious();
  cursor.MoveLast();
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 0 of 0"));
}

TEST_F(RecordCursorTest, ARecordIsFoundFromWhereverItStandsAndExactlyAsStored) {
  Open();
  cursor.MoveLast();
  EXPECT_TRUE(cursor.Find(Word("Bach")));
  EXPECT_EQ(cursor.Position(), 1);
  EXPECT_TRUE(cursor.Find(Word("O'Carolan")));
  EXPECT_EQ(cursor.Position(), 3);
  for (const char* not_there : {"bach", "Bach ", "", "O", "Various", "' or 1 = 1"}) {
    EXPECT_FALSE(cursor.Find(Word(not_there))) << not_there;
    EXPECT_EQ(cursor.Position(), 3) << not_there;
  }
}

TEST_F(RecordCursorTest, AHookMayEndTheCursor) {
  auto mortal = std::make_unique<RecordCursor>(Composers(), QString());
  mortal->OpenAll(connection);
  mortal->OnBeforeStart([&] { mortal.reset(); });
  mortal->MovePrevious();
  EXPECT_EQ(mortal, nullptr);

  mortal = std::make_unique<RecordCursor>(Composers(), QString());
  mortal->OpenAll(connection);
  mortal->BeforeLeaving([&] {
    mortal.reset();
    return true;
  });
  mortal->MoveNext();
  EXPECT_EQ(mortal, nullptr);
}

// --- Leaving ---

TEST_F(RecordCursorTest, WhoKeepsSomethingOfTheRecordIsAskedBeforeItIsLeft) {
  Open(true);
  bool may_leave = false;
  int asked = 0;
  cursor.BeforeLeaving([&] {
    ++asked;
    return may_leave;
  });
  cursor.MoveNext();
  cursor.MoveLast();
  EXPECT_FALSE(cursor.Find(Word("Mozart")));
  EXPECT_FALSE(cursor.Lock());
  EXPECT_FALSE(cursor.Add({{kKey, Word("Holst")}}));
  EXPECT_FALSE(cursor.Leave());
  EXPECT_EQ(asked, 6);
  EXPECT_EQ(cursor.Position(), 1);
  EXPECT_FALSE(cursor.Locked());
  EXPECT_EQ(Stored().size(), 4);
  may_leave = true;
  cursor.MoveNext();
  EXPECT_EQ(cursor.Position(), 2);
}

TEST_F(RecordCursorTest, WhoIsAskedMayTakeAllRecordsAwayOrEndTheCursor) {
  Open();
  int ends = 0;
  cursor.OnPastEnd([&] { ++ends; });
  cursor.OnBeforeStart([&] { ++ends; });
  cursor.BeforeLeaving([&] {
    database.Execute(QStringLiteral("delete * from tblComposer"));
    cursor.Refresh();
    return true;
  });
  cursor.MoveNext();
  EXPECT_FALSE(cursor.HasRecord());
  EXPECT_EQ(ends, 0);
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 0 of 0"));
}

TEST_F(RecordCursorTest, OneWhoHoldsTheRecordIsEnoughAndTheOthersAreNotAsked) {
  Open();
  int asked = 0;
  cursor.BeforeLeaving([] { return false; });
  cursor.BeforeLeaving([&] { return ++asked > 0; });
  cursor.MoveNext();
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(cursor.Position(), 1);
}

TEST_F(RecordCursorTest, AMoveWhileOneIsBeingAskedIsNone) {
  Open();
  cursor.BeforeLeaving([&] {
    cursor.MoveLast();
    return true;
  });
  cursor.MoveNext();
  EXPECT_EQ(cursor.Position(), 2);
}

TEST_F(RecordCursorTest, AFailureOfOneWhoIsAskedEndsTheMoveAndNoMore) {
  Open();
  bool fails = true;
  cursor.BeforeLeaving([&]() -> bool {
    if (fails) throw Failure(error_number::kFileAccess, QStringLiteral("no"));
    return true;
  });
  EXPECT_EQ(FailureNumber([&] { cursor.MoveNext(); }), error_number::kFileAccess);
  fails = false;
  cursor.MoveNext();
  EXPECT_EQ(cursor.Position(), 2);
}

// --- Changing ---

TEST_F(RecordCursorTest, NothingIsChangedWhileItIsLocked) {
  Open();
  EXPECT_TRUE(cursor.Locked());
  EXPECT_EQ(FailureNumber([&] { cursor.Store(kFirstName, Word("x")); }), database_error::kReadOnly);
  EXPECT_EQ(FailureNumber([&] { cursor.Add({{kKey, Word("x")}}); }), database_error::kReadOnly);
  EXPECT_EQ(FailureNumber([&] { cursor.Delete(); }), database_error::kReadOnly);
  EXPECT_EQ(Stored().size(), 4);
  const SignalCount told(&cursor, &RecordCursor::LockChanged);
  cursor.Unlock();
  cursor.Unlock();
  EXPECT_TRUE(cursor.Lock());
  EXPECT_TRUE(cursor.Lock());
  EXPECT_EQ(told.Count(), 2);
  EXPECT_EQ(FailureNumber([&] { cursor.Delete(); }), database_error::kReadOnly);
}

TEST_F(RecordCursorTest, AStoredValueIsInTheDatabaseAtOnceAndShown) {
  Open(true);
  cursor.MoveNext();
  const SignalCount moved(&cursor, &RecordCursor::Moved);
  const SignalCount another(&cursor, &RecordCursor::AnotherRecord);
  cursor.Store(kFirstName, Word("Wolfgang Amadé"));
  EXPECT_EQ(database.Column(QStringLiteral("SELECT FIRST_NAME FROM tblComposer WHERE COMPOSER = 'Mozart'")),
            QStringList(Word("Wolfgang Amadé")));
  EXPECT_EQ(cursor.Text(kFirstName), Word("Wolfgang Amadé"));
  EXPECT_EQ(cursor.Position(), 2);
  EXPECT_EQ(moved.Count(), 1);
  EXPECT_EQ(another.Count(), 0);
}

TEST_F(RecordCursorTest, AStoredValueLeavesTheOtherColumnsAsAnotherChangedThem) {
  Open(true);
  database.Execute(QStringLiteral("UPDATE tblComposer SET BORN = 1600 WHERE COMPOSER = 'Bach'"));
  cursor.Store(kFirstName, Word("J. S."));
  EXPECT_EQ(cursor.Value(QStringLiteral("BORN")).toInt(), 1600);
  EXPECT_EQ(Rows(QStringLiteral("SELECT FIRST_NAME, BORN FROM tblComposer WHERE COMPOSER = 'Bach'")),
            QStringList(QStringLiteral("J. S.|1600")));
}

TEST_F(RecordCursorTest, ARenamedKeyIsToldWithBothNamesAndStaysTheCurrentRecord) {
  Open(true);
  QStringList renamed;
  QObject::connect(&cursor, &RecordCursor::Renamed, [&renamed](const QVariant& from, const QVariant& to) {
    renamed.append(from.toString() + u'>' + to.toString());
  });
  const SignalCount keys(&cursor, &RecordCursor::KeysChanged);
  const SignalCount another(&cursor, &RecordCursor::AnotherRecord);
  cursor.Store(QStringLiteral("composer"), Word("Zelenka's"));
  EXPECT_EQ(renamed, QStringList(Word("Bach>Zelenka's")));
  EXPECT_EQ(keys.Count(), 1);
  EXPECT_EQ(another.Count(), 1);
  EXPECT_EQ(cursor.Text(kKey), Word("Zelenka's"));
  EXPECT_EQ(Stored().last(), Word("Zelenka's"));
  cursor.Store(kFirstName, Word("Jan"));
  EXPECT_EQ(cursor.Text(kFirstName), Word("Jan")) << "it is found again under its new name";
}

TEST_F(RecordCursorTest, OneRecordAloneIsFoundUnderItsNewNameAsWell) {
  cursor.OpenOne(connection, Word("Bach"));
  cursor.Unlock();
  cursor.Store(kKey, Word("Bach, J. S."));
  cursor.Store(kFirstName, Word("x"));
  EXPECT_EQ(cursor.Text(kFirstName), Word("x"));
  cursor.Refresh();
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 1 of 1"));
}

TEST_F(RecordCursorTest, AKeyThatIsTakenOrEmptyIsRefusedAndTheOldOneStays) {
  Open(true);
  const SignalCount moved(&cursor, &RecordCursor::Moved);
  try {
    cursor.Store(kKey, Word("Mozart"));
    FAIL() << "nothing was thrown";
  } catch (const DatabaseError& error) {
    EXPECT_EQ(error.Number(), database_error::kDuplicateValue);
    EXPECT_EQ(error.Description(), QStringLiteral("There is a record \"Mozart\" already."));
  }
  for (const QVariant& nothing : {QVariant(), QVariant(QStringLiteral("")), QVariant(QStringLiteral("  "))})
    EXPECT_EQ(FailureNumber([&] { cursor.Store(kKey, nothing); }), database_error::kItemNotFound);
  EXPECT_EQ(cursor.Text(kKey), Word("Bach"));
  EXPECT_EQ(moved.Count(), 0);
  cursor.Store(kFirstName, Word("x"));
  EXPECT_EQ(database.Column(QStringLiteral("SELECT FIRST_NAME FROM tblComposer WHERE COMPOSER = 'Bach'")),
            QStringList(Word("x")))
      << "what was refused is not in the way of the next change";
}

TEST_F(RecordCursorTest, AnAddedRecordStandsInItsPlaceAndIsTheCurrentOne) {
  Open(true);
  const SignalCount keys(&cursor, &RecordCursor::KeysChanged);
  EXPECT_TRUE(cursor.Add({{kKey, Word("D'Indy")}, {QStringLiteral("BORN"), 1851}}));
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 2 of 4"));
  EXPECT_EQ(cursor.Text(kKey), Word("D'Indy"));
  EXPECT_EQ(cursor.Value(QStringLiteral("BORN")).toInt(), 1851);
  EXPECT_TRUE(cursor.Value(kFirstName).isNull());
  EXPECT_EQ(keys.Count(), 1);
}

TEST_F(RecordCursorTest, AddingToOneRecordShowsAll) {
  cursor.OpenOne(connection, Word("Mozart"));
  cursor.Unlock();
  EXPECT_TRUE(cursor.Add({{kKey, Word("Holst")}}));
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 2 of 4"));
}

TEST_F(RecordCursorTest, ARecordThatCannotBeAddedChangesNothing) {
  Open(true);
  cursor.MoveNext();
  EXPECT_EQ(FailureNumber([&] { cursor.Add({{kKey, Word("Bach")}}); }), database_error::kDuplicateValue);
  EXPECT_EQ(FailureNumber([&] { cursor.Add({{kFirstName, Word("x")}}); }), database_error::kItemNotFound);
  EXPECT_EQ(FailureNumber([&] { cursor.Add({{kKey, Word(" ")}}); }), database_error::kItemNotFound);
  EXPECT_EQ(FailureNumber([&] {
              cursor.Add({{kKey, Word("x")}, {Word("no_column"), 1}});
            }),
            database_error::kItemNotFound);
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 2 of 3"));
  EXPECT_EQ(Stored().size(), 4);
}

TEST_F(RecordCursorTest, ARecordThatTheConditionLeavesOutIsAddedAndNotShown) {
  database.Execute(QStringLiteral("delete * from tblComposer where COMPOSER = 'Various'"));
  Open(true);
  EXPECT_TRUE(cursor.Add({{kKey, Word("Various")}}));
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 1 of 3"));
  EXPECT_EQ(Stored().size(), 4);
}

TEST_F(RecordCursorTest, AfterADeletedRecordComesTheNextAndAtTheEndTheLast) {
  Open(true);
  cursor.MoveNext();
  const SignalCount keys(&cursor, &RecordCursor::KeysChanged);
  cursor.Delete();
  EXPECT_EQ(cursor.Text(kKey), Word("O'Carolan"));
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 2 of 2"));
  cursor.Delete();
  EXPECT_EQ(cursor.Text(kKey), Word("Bach"));
  cursor.Delete();
  EXPECT_FALSE(cursor.HasRecord());
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 0 of 0"));
  EXPECT_EQ(FailureNumber([&] { cursor.Delete(); }), database_error::kNoCurrentRecord);
  EXPECT_EQ(keys.Count(), 3);
  EXPECT_EQ(Stored(), QStringList(Word("Various")));
  EXPECT_TRUE(cursor.Add({{kKey, Word("Holst")}}));
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 1 of 1"));
}

TEST_F(RecordCursorTest, WhoIsAskedBeforeALeavingMayStoreAndWhoIsToldMayMove) {
  Open(true);
  cursor.BeforeLeaving([&] {
    cursor.Store(kFirstName, Word("from a guard"));
    return true;
  });
  bool left = false;
  QObject::connect(&cursor, &RecordCursor::AnotherRecord, [&] { left = cursor.Leave(); });
  cursor.MoveNext();
  EXPECT_EQ(cursor.Text(kKey), Word("Mozart"));
  EXPECT_EQ(database.Column(QStringLiteral("SELECT FIRST_NAME FROM tblComposer WHERE COMPOSER = 'Bach'")),
            QStringList(Word("from a guard")));
  EXPECT_TRUE(left) << "the work is done when it is told";
}

// --- When the database does not play along ---

TEST_F(RecordCursorTest, ARecordThatAnotherTookOutIsToldAndGoneFromTheWalk) {
  const std::pair<const char*, std::function<void()>> changes[] = {
      {"Bach", [&] { cursor.Store(kFirstName, Word("x")); }}, {"Mozart", [&] { cursor.Delete(); }}};
  for (const auto& [name, change] : changes) {
    Open(true);
    ASSERT_TRUE(cursor.Find(Word(name)));
    database.Execute(QStringLiteral("delete * from tblComposer where COMPOSER = '%1'").arg(Word(name)));
    const SignalCount another(&cursor, &RecordCursor::AnotherRecord);
    try {
      change();
      FAIL() << "nothing was thrown";
    } catch (const DatabaseError& error) {
      EXPECT_EQ(error.Number(), database_error::kNoCurrentRecord);
      EXPECT_EQ(error.Description(),
                QStringLiteral("The record \"%1\" is no longer in the database.").arg(Word(name)));
    }
    EXPECT_EQ(another.Count(), 1);
    EXPECT_FALSE(cursor.Keys().contains(Word(name)));
  }
  EXPECT_EQ(cursor.Text(kKey), Word("O'Carolan"));
}

TEST_F(RecordCursorTest, ADatabaseThatCannotBeWrittenLeavesAllAsItWas) {
  Open(true);
  cursor.Store(kFirstName, Word("Johann S."));  // what the engine writes once is there
  {
    const FullDisk full(1000);
    EXPECT_NE(FailureNumber([&] { cursor.Store(kFirstName, Word("x")); }), 0);
    EXPECT_NE(FailureNumber([&] { cursor.Add({{kKey, Word("Holst")}}); }), 0);
    EXPECT_NE(FailureNumber([&] { cursor.Delete(); }), 0);
  }
  EXPECT_EQ(cursor.Text(kFirstName), Word("Johann S."));
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 1 of 3"));
  cursor.Store(kFirstName, Word("J."));
  EXPECT_EQ(cursor.Text(kFirstName), Word("J.")) << "the next change meets nothing that was left over";
  EXPECT_EQ(Stored().size(), 4);
}

TEST_F(RecordCursorTest, ARowSetThatCannotBeChangedRefusesEachChange) {
  RecordCursor names({QStringLiteral("select distinct NATIONAL, COMPOSER from tblComposer"), {}, {}, kKey},
                     QString());
  names.OpenAll(connection);
  names.Unlock();
  EXPECT_EQ(FailureNumber([&] { names.Store(kKey, Word("x")); }), database_error::kReadOnly);
  EXPECT_EQ(FailureNumber([&] { names.Delete(); }), database_error::kReadOnly);
}

TEST_F(RecordCursorTest, AClosedConnectionLeavesNoRecordAndNoCrash) {
  Open(true);
  connection->Close();
  EXPECT_FALSE(cursor.HasRecord());
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 0 of 0"));
  EXPECT_TRUE(cursor.Text(kKey).isEmpty());
  cursor.MoveNext();
  EXPECT_FALSE(cursor.Find(Word("Bach")));
  EXPECT_NE(FailureNumber([&] { cursor.Store(kFirstName, Word("x")); }), 0);
  EXPECT_NE(FailureNumber([&] { cursor.Add({{kKey, Word("x")}}); }), 0);
  EXPECT_NE(FailureNumber([&] { cursor.Delete(); }), 0);
  EXPECT_NE(FailureNumber([&] { cursor.Refresh(); }), 0);
  cursor.OpenAll(database.Connect());
  EXPECT_EQ(cursor.Count(), 3);
}

TEST_F(RecordCursorTest, ATableThatIsGoneIsAFailureAndTheRecordsStayInSight) {
  Open(true);
  cursor.MoveNext();
  database.Execute(QStringLiteral("DROP TABLE tblComposer"));
  EXPECT_EQ(FailureNumber([&] { cursor.Refresh(); }), error_number::kTableNotFound);
  EXPECT_EQ(FailureNumber([&] { cursor.Store(kFirstName, Word("x")); }), error_number::kTableNotFound);
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 2 of 3"));
}

TEST_F(RecordCursorTest, ARefreshShowsWhatOthersDidAndKeepsTheRecord) {
  Open();
  cursor.MoveNext();
  database.Execute(
      QStringLiteral("INSERT INTO tblComposer VALUES ('Arne','Thomas',1710,1778,'England','Baroque')"));
  const SignalCount another(&cursor, &RecordCursor::AnotherRecord);
  cursor.Refresh();
  EXPECT_EQ(cursor.PositionText(), QStringLiteral("Composer No. 3 of 4"));
  EXPECT_EQ(cursor.Text(kKey), Word("Mozart"));
  EXPECT_EQ(another.Count(), 0);
  database.Execute(QStringLiteral("delete * from tblComposer"));
  cursor.Refresh();
  EXPECT_FALSE(cursor.HasRecord());
  EXPECT_EQ(another.Count(), 1);
}

}  // namespace
}  // namespace zelmar::testing_support
