// Rows added, changed and deleted.
#include "store/rowsets_fixture.h"

namespace zelmar::testing_support {
namespace {

using ChangedRowsets = Rowsets;

TEST_F(ChangedRowsets, AddedRowsWaitForTheBatch) {
  const auto rows = Open();
  rows->AddNew();
  rows->SetValue(code_name, QStringLiteral("Four"));
  rows->SetValue(n, std::uint8_t{4});
  rows->SetValue(r, 0.25F);
  rows->SetValue(word, QString());
  EXPECT_EQ(rows->RecordCount(), 4);
  EXPECT_EQ(Names().size(), 3);
  rows->UpdateBatch();
  EXPECT_EQ(Rows(QStringLiteral("SELECT *, typeof(n), typeof(Word) FROM t WHERE n = 4")),
            QStringList(QStringLiteral("Four||4|0.25|integer|text")));
  rows->SetValue(word, QVariant());
  rows->UpdateBatch();
  EXPECT_EQ(Rows(QStringLiteral("SELECT Word FROM t WHERE n = 4")), QStringList(QStringLiteral("null")));
}

TEST_F(ChangedRowsets, ARowOfNothingIsARowOfNulls) {
  const auto rows = Open();
  rows->AddNew();
  rows->UpdateBatch();
  EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM t")).last(), QStringLiteral("null|null|null|null"));
}

TEST_F(ChangedRowsets, EachBatchCommitsForItself) {
  const auto rows = Open();
  for (int i = 0; i < 3; ++i) {
    rows->AddNew();
    rows->SetValue(n, 10 + i);
    if (i == 1) rows->SetValue(word, true);
    rows->UpdateBatch();
    EXPECT_EQ(Names().size(), 4 + i);
  }
}

TEST_F(ChangedRowsets, ChangedRowsAreChangedInPlace) {
  for (const LockType lock : {LockType::kOptimistic, LockType::kBatchOptimistic}) {
    const auto rows = Recordset::OpenStatement(
        connection, QStringLiteral("select * from t WHERE CodeName <> 'Three' Order by n"),
        CursorType::kStatic, lock);
    rows->MoveNext();
    rows->SetValue(word, lock == LockType::kOptimistic ? QStringLiteral("b") : QStringLiteral("c"));
    rows->UpdateBatch();
    EXPECT_EQ(database.Column(QStringLiteral("SELECT Word FROM t")).at(1), rows->Text(word));
  }
  EXPECT_EQ(Names().size(), 3);
}

TEST_F(ChangedRowsets, SeveralChangesAreCommittedAtOnceOrNotAtAll) {
  connection->Execute(QStringLiteral("CREATE TABLE k (CodeName TEXT PRIMARY KEY)"));
  const auto rows = Recordset::OpenTable(connection, QStringLiteral("k"));
  for (const char16_t* name : {u"a", u"b", u"a"}) {
    rows->AddNew();
    rows->SetValue(0, QString::fromUtf16(name));
  }
  EXPECT_EQ(FailureNumber([&] { rows->UpdateBatch(); }), database_error::kDuplicateValue);
  EXPECT_EQ(database.Column(QStringLiteral("SELECT * FROM k")).size(), 0);
  rows->SetValue(0, QStringLiteral("c"));
  rows->UpdateBatch();
  EXPECT_EQ(database.Column(QStringLiteral("SELECT * FROM k ORDER BY CodeName")),
            QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
}

TEST_F(ChangedRowsets, TwoChangesAreAsMuchABatchAsMany) {
  connection->Execute(QStringLiteral("CREATE TABLE k (CodeName TEXT PRIMARY KEY)"));
  connection->Execute(QStringLiteral("INSERT INTO k VALUES ('a')"));
  const auto kept = [this] { return database.Column(QStringLiteral("SELECT * FROM k ORDER BY CodeName")); };
  const auto rows = Recordset::OpenTable(connection, QStringLiteral("k"));
  for (const char16_t* name : {u"b", u"a"}) {
    rows->AddNew();
    rows->SetValue(0, QString::fromUtf16(name));
  }
  EXPECT_EQ(FailureNumber([&] { rows->UpdateBatch(); }), database_error::kDuplicateValue);
  EXPECT_EQ(kept(), QStringList(QStringLiteral("a"))) << "the first of the two is not left behind";
  rows->SetValue(0, QStringLiteral("c"));
  rows->MoveFirst();
  rows->Delete();
  rows->UpdateBatch();
  EXPECT_EQ(kept(), QStringList({QStringLiteral("b"), QStringLiteral("c")}));
}

TEST_F(ChangedRowsets, ADeletionAndAChangeAreABatchOfTwo) {
  connection->Execute(QStringLiteral("CREATE TABLE k (CodeName TEXT PRIMARY KEY)"));
  connection->Execute(QStringLiteral("INSERT INTO k VALUES ('a'), ('b'), ('c')"));
  const auto rows = Recordset::OpenTable(connection, QStringLiteral("k"));
  rows->Delete();
  rows->MoveLast();
  rows->SetValue(0, QStringLiteral("b"));
  EXPECT_EQ(FailureNumber([&] { rows->UpdateBatch(); }), database_error::kDuplicateValue);
  EXPECT_EQ(database.Column(QStringLiteral("SELECT * FROM k ORDER BY CodeName")).join(u' '),
            QStringLiteral("a b c"));
}

// --- Keys that are numbers ---

class NumberKeys : public Rowsets {
 protected:
  NumberKeys() {
    for (int number = 1; number <= 3; ++number)
      database.AddRow(QStringLiteral("tblInstruments"),
                      {number, QStringLiteral("Instrument %1").arg(number), QStringLiteral("Strings"), 0, 4,
                       QStringLiteral("E7"), QStringLiteral("G3")});
    rows = Recordset::OpenTable(connection, QStringLiteral("tblInstruments"));
  }
  QStringList Instruments() const {
    return Rows(QStringLiteral("SELECT InstrumentNo, InstrumentName FROM tblInstruments"));
  }

  std::unique_ptr<Recordset> rows;
  const QString key = QStringLiteral("instrumentno");
  const QString name = QStringLiteral("InstrumentName");
};

TEST_F(NumberKeys, ARowWhoseKeyWasChangedIsChangedUnderItsNewOne) {
  rows->SetValue(key, 40);
  rows->UpdateBatch();
  rows->SetValue(name, QStringLiteral("Violin"));
  rows->UpdateBatch();
  EXPECT_EQ(Instruments(), QStringList({QStringLiteral("2|Instrument 2"), QStringLiteral("3|Instrument 3"),
                                        QStringLiteral("40|Violin")}));
  // Another row may take the old key meanwhile.
  database.AddRow(QStringLiteral("tblInstruments"),
                  {1, QStringLiteral("New"), QVariant(), 0, 4, QVariant(), QVariant()});
  rows->SetValue(key, QStringLiteral("41"));
  rows->UpdateBatch();
  rows->Delete();
  rows->UpdateBatch();
  EXPECT_EQ(Instruments(), QStringList({QStringLiteral("1|New"), QStringLiteral("2|Instrument 2"),
                                        QStringLiteral("3|Instrument 3")}));
}

TEST_F(NumberKeys, SeveralRowsMayMoveUpInOneBatch) {
  rows->MoveLast();
  for (int number = 3; number >= 1; --number) {
    rows->SetValue(key, number + 1);
    if (number > 1) rows->MovePrevious();
  }
  rows->UpdateBatch();
  rows->SetValue(name, QStringLiteral("First"));
  rows->MoveNext();
  rows->Delete();
  rows->UpdateBatch();
  EXPECT_EQ(Instruments(), QStringList({QStringLiteral("2|First"), QStringLiteral("4|Instrument 3")}));
}

TEST_F(NumberKeys, AChangeThatFailsLeavesTheRowUnderItsKey) {
  rows->SetValue(key, 2);
  EXPECT_EQ(FailureNumber([&] { rows->UpdateBatch(); }), database_error::kDuplicateValue);
  rows->SetValue(key, 9);
  rows->SetValue(name, QStringLiteral("Nine"));
  rows->UpdateBatch();
  EXPECT_EQ(Instruments().last(), QStringLiteral("9|Nine"));
  EXPECT_EQ(Instruments().size(), 3);
}

TEST_F(NumberKeys, ANewRowIsFoundByTheKeyThatItWasGiven) {
  rows->AddNew();
  rows->SetValue(key, 77);
  rows->UpdateBatch();
  rows->SetValue(key, 78);
  rows->UpdateBatch();
  rows->SetValue(name, QStringLiteral("Organ"));
  rows->UpdateBatch();
  EXPECT_EQ(Instruments().last(), QStringLiteral("78|Organ"));
}

TEST_F(NumberKeys, ANumberThatIsNoKeyOrOnlyPartOfOneIsNoIdentity) {
  connection->Execute(QStringLiteral("CREATE TABLE pairs (a INTEGER, b INTEGER, PRIMARY KEY (a, b))"));
  connection->Execute(QStringLiteral("CREATE TABLE real_keys (a REAL PRIMARY KEY, b INTEGER)"));
  for (const char16_t* table : {u"pairs", u"real_keys", u"t"}) {
    const QString table_name = QString::fromUtf16(table);
    const auto plain = Recordset::OpenTable(connection, table_name);
    plain->AddNew();
    const QString number = table_name == u"t" ? n : QStringLiteral("a");
    plain->SetValue(number, 100);
    plain->UpdateBatch();
    plain->SetValue(number, 200);
    plain->UpdateBatch();
    plain->SetValue(number, 300);
    plain->UpdateBatch();
    EXPECT_EQ(plain->Number<int>(number), 300);
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM %1").arg(table_name)).filter(QStringLiteral("300")).size(),
              1);
  }
}

// --- Deleting ---

TEST_F(ChangedRowsets, DeletedRowsWaitForTheBatchUnlessTheLockIsOptimistic) {
  const auto batch = Open();
  batch->MoveNext();
  batch->Delete();
  EXPECT_EQ(Names().size(), 3);
  EXPECT_EQ(batch->RecordCount(), 2);
  EXPECT_EQ(batch->AbsolutePosition(), 0);
  EXPECT_EQ(FailureNumber([&] { batch->Text(code_name); }), database_error::kNoCurrentRecord);
  batch->MoveNext();
  EXPECT_EQ(batch->Text(code_name), QStringLiteral("Three"));
  EXPECT_EQ(batch->AbsolutePosition(), 2);
  batch->MovePrevious();
  EXPECT_EQ(batch->Text(code_name), QStringLiteral("One"));
  batch->MoveTo(2);
  EXPECT_EQ(batch->Text(code_name), QStringLiteral("Three"));
  batch->UpdateBatch();
  EXPECT_EQ(Names(), QStringList({QStringLiteral("One"), QStringLiteral("Three")}));

  const auto at_once = Open(CursorType::kKeyset, LockType::kOptimistic);
  at_once->Delete();
  EXPECT_EQ(Names(), QStringList(QStringLiteral("Three")));
}

TEST_F(ChangedRowsets, PositionsSkipDeletedRowsWhereverTheyStand) {
  database.AddTune(QStringLiteral("Long"), {});
  database.AddNotes(QStringLiteral("Long"), 40);
  for (const CursorType cursor : {CursorType::kKeyset, CursorType::kStatic}) {
    const auto rows = Recordset::OpenTable(connection, QStringLiteral("Long"), cursor);
    std::vector<int> left;
    for (int i = 1; i <= 40; ++i) left.push_back(i);
    // Steps through the list from both ends, so that runs of deleted rows arise everywhere.
    for (std::size_t turn = 0; !left.empty(); ++turn) {
      const std::size_t place = turn * 7 % left.size();
      rows->MoveTo(static_cast<qsizetype>(place) + 1);
      ASSERT_EQ(rows->Number<int>(1), left[place]);
      rows->Delete();
      EXPECT_EQ(rows->AbsolutePosition(), 0);
      left.erase(left.begin() + static_cast<std::ptrdiff_t>(place));
      ASSERT_EQ(rows->RecordCount(), static_cast<qsizetype>(left.size()));
      if (place < left.size()) {
        rows->MoveNext();
        EXPECT_EQ(rows->Number<int>(1), left[place]) << "the next row takes the place of the deleted one";
        EXPECT_EQ(rows->AbsolutePosition(), static_cast<qsizetype>(place) + 1);
        rows->MovePrevious();
      } else {
        rows->MovePrevious();
      }
      EXPECT_EQ(rows->AbsolutePosition(), static_cast<qsizetype>(place));
      EXPECT_EQ(rows->Bof(), place == 0);
      if (place > 0) {
        EXPECT_EQ(rows->Number<int>(1), left[place - 1]);
      }
      if (left.empty()) break;
      rows->MoveLast();
      EXPECT_EQ(rows->Number<int>(1), left.back());
      rows->MoveFirst();
      EXPECT_EQ(rows->Number<int>(1), left.front());
    }
    EXPECT_EQ(FailureNumber([&] { rows->MoveFirst(); }), database_error::kNoCurrentRecord);
  }
}

// Counting or searching the rows anew at each step would take ten thousand million steps here.
TEST_F(ChangedRowsets, ManyRowsAreDeletedAndCountedOneByOne) {
  constexpr qsizetype kRows = 100000;
  database.AddTune(QStringLiteral("Long"), {});
  database.AddNotes(QStringLiteral("Long"), kRows);
  const auto rows = Recordset::OpenStatement(connection, QStringLiteral("SELECT AbsRef FROM [Long]"),
                                             CursorType::kStatic, LockType::kBatchOptimistic);
  for (; !rows->Eof(); rows->MoveNext()) rows->SetValue(0, 7);
  rows->MoveFirst();
  for (qsizetype left = kRows; left > 1; --left) {
    rows->MoveTo(left / 2);
    rows->Delete();
    ASSERT_EQ(rows->RecordCount(), left - 1);
    rows->MoveTo(left / 2);
    ASSERT_EQ(rows->AbsolutePosition(), left / 2);
  }
}

TEST_F(ChangedRowsets, ARowChangedAndThenDeletedIsDeletedAndAnAddedOneNeverStored) {
  for (const LockType lock : {LockType::kBatchOptimistic, LockType::kOptimistic}) {
    const auto rows = Open(CursorType::kStatic, lock);
    const qsizetype count = rows->RecordCount();
    rows->AddNew();
    rows->SetValue(code_name, QStringLiteral("Never"));
    rows->Delete();
    EXPECT_EQ(Names().size(), count) << "a row that was never stored is nothing to commit";
    rows->MoveFirst();
    rows->SetValue(word, QStringLiteral("changed"));
    rows->Delete();
    rows->UpdateBatch();
    EXPECT_EQ(Names().size(), count - 1);
    EXPECT_EQ(rows->RecordCount(), count - 1);
    EXPECT_FALSE(Rows(QStringLiteral("SELECT * FROM t")).join(u' ').contains(u"changed"));
  }
}

TEST_F(ChangedRowsets, ARowAddedAndDeletedWasNeverThere) {
  const auto rows = Open();
  rows->AddNew();
  rows->Delete();
  rows->UpdateBatch();
  EXPECT_EQ(Names().size(), 3);
  EXPECT_EQ(rows->RecordCount(), 3);
}

TEST_F(ChangedRowsets, WithoutACurrentRowNothingIsChangedOrDeleted) {
  const auto expect_refused = [this](Recordset& rows) {
    EXPECT_EQ(FailureNumber([&] { rows.SetValue(n, 5); }), database_error::kNoCurrentRecord);
    EXPECT_EQ(FailureNumber([&] { rows.Delete(); }), database_error::kNoCurrentRecord);
    rows.UpdateBatch();
  };
  const QStringList before = Rows(QStringLiteral("SELECT * FROM t"));
  for (const CursorType cursor : {CursorType::kKeyset, CursorType::kStatic}) {
    const auto rows = Open(cursor);
    rows->MoveLast();
    rows->MoveNext();
    expect_refused(*rows);
    rows->MoveFirst();
    rows->MovePrevious();
    expect_refused(*rows);
    EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM t")), before);
    rows->MoveFirst();
    rows->Delete();
    EXPECT_EQ(FailureNumber([&] { rows->SetValue(n, 5); }), database_error::kNoCurrentRecord);
    EXPECT_EQ(FailureNumber([&] { rows->Delete(); }), database_error::kNoCurrentRecord);
  }
}

TEST_F(ChangedRowsets, ARowThatSomeoneElseTookOutCannotBeChanged) {
  const auto rows = Open();
  database.Execute(QStringLiteral("delete * from t"));
  rows->SetValue(n, 5);
  EXPECT_EQ(FailureNumber([&] { rows->UpdateBatch(); }), database_error::kNoCurrentRecord);
}

TEST_F(ChangedRowsets, RowsThatAreNotThoseOfOneTableCannotBeChanged) {
  const auto refused = [&](const QString& statement, CursorType cursor, LockType lock) {
    return FailureNumber([&] { Recordset::OpenStatement(connection, statement, cursor, lock)->AddNew(); });
  };
  const auto table = QStringLiteral("SELECT * FROM t");
  EXPECT_EQ(refused(table, CursorType::kStatic, LockType::kReadOnly), database_error::kReadOnly);
  EXPECT_EQ(refused(table, CursorType::kForwardOnly, LockType::kOptimistic), database_error::kReadOnly);
  EXPECT_EQ(
      refused(QStringLiteral("SELECT DISTINCT n FROM t"), CursorType::kStatic, LockType::kBatchOptimistic),
      database_error::kReadOnly);
  EXPECT_EQ(refused(QStringLiteral("SELECT n FROM t UNION SELECT n FROM t"), CursorType::kStatic,
                    LockType::kBatchOptimistic),
            database_error::kReadOnly);
}

// --- Forward-only with a batch lock ---

class AppendingRowset : public Rowsets {
 protected:
  std::unique_ptr<Recordset> OpenToAppend() {
    return Recordset::OpenTable(connection, QStringLiteral("t"), CursorType::kForwardOnly,
                                LockType::kBatchOptimistic);
  }
  void Append(Recordset& rows, int number) {
    rows.AddNew();
    rows.SetValue(n, number);
    rows.UpdateBatch();
  }
};

TEST_F(AppendingRowset, TakesNewRowsAndLetsThemGo) {
  const auto rows = OpenToAppend();
  for (int i = 0; i < 3; ++i) {
    Append(*rows, 10 + i);
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(FailureNumber([&] { rows->Value(n); }), database_error::kNoCurrentRecord);
    EXPECT_EQ(rows->RecordCount(), 4 + i);
  }
  rows->MoveFirst();
  for (int i = 1; i <= 6; ++i, rows->MoveNext()) EXPECT_EQ(rows->AbsolutePosition(), i);
  EXPECT_TRUE(rows->Eof());
}

TEST_F(AppendingRowset, SeveralRowsGoInOneBatch) {
  const auto rows = OpenToAppend();
  for (int i = 0; i < 3; ++i) {
    rows->AddNew();
    rows->SetValue(n, 10 + i);
  }
  EXPECT_EQ(Names().size(), 3);
  EXPECT_EQ(FailureNumber([&] { rows->MoveFirst(); }), database_error::kForwardOnly);
  rows->UpdateBatch();
  EXPECT_EQ(Names().size(), 6);
}

TEST_F(AppendingRowset, RefusesToChangeTheRowsThatItReads) {
  const auto rows = OpenToAppend();
  EXPECT_EQ(FailureNumber([&] { rows->SetValue(n, 5); }), database_error::kReadOnly);
  EXPECT_EQ(FailureNumber([&] { rows->Delete(); }), database_error::kReadOnly);
  rows->UpdateBatch();
  connection->Execute(QStringLiteral("update t set n = n"));  // the rows that are left go into memory
  EXPECT_EQ(FailureNumber([&] { rows->SetValue(n, 5); }), database_error::kReadOnly);
  Append(*rows, 10);
  EXPECT_EQ(Names().size(), 4);
}

}  // namespace
}  // namespace zelmar::testing_support
