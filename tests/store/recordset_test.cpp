// Cursors and the reading of rows.
#include "store/rowsets_fixture.h"

namespace zelmar::testing_support {
namespace {

TEST_F(Rowsets, EveryCursorStartsOnTheFirstRowAndEndsBehindTheLast) {
  for (const CursorType cursor : {CursorType::kForwardOnly, CursorType::kKeyset, CursorType::kStatic}) {
    const auto rows = Open(cursor);
    EXPECT_FALSE(rows->Bof());
    QStringList names;
    for (; !rows->Eof(); rows->MoveNext()) {
      names.append(rows->Text(code_name));
      EXPECT_EQ(rows->AbsolutePosition(), names.size());
    }
    EXPECT_EQ(names, QStringList({QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")}));
    EXPECT_EQ(rows->AbsolutePosition(), 0);
    EXPECT_EQ(FailureNumber([&] { rows->MoveNext(); }), database_error::kNoCurrentRecord);
    EXPECT_EQ(FailureNumber([&] { rows->Text(code_name); }), database_error::kNoCurrentRecord);
    EXPECT_EQ(rows->RecordCount(), 3);
  }
}

TEST_F(Rowsets, AnEmptySetHasNoFirstRow) {
  connection->Execute(QStringLiteral("delete * from t"));
  for (const CursorType cursor : {CursorType::kForwardOnly, CursorType::kKeyset, CursorType::kStatic}) {
    const auto rows = Open(cursor);
    EXPECT_TRUE(rows->Eof());
    EXPECT_TRUE(rows->Bof());
    EXPECT_EQ(rows->RecordCount(), 0);
    EXPECT_EQ(FailureNumber([&] { rows->MoveFirst(); }), database_error::kNoCurrentRecord);
    EXPECT_EQ(FailureNumber([&] { rows->MoveNext(); }), database_error::kNoCurrentRecord);
    EXPECT_EQ(FailureNumber([&] { rows->Find(QStringLiteral("CodeName = 'One'")); }),
              database_error::kNoCurrentRecord);
  }
  const auto rows = Open();
  EXPECT_EQ(FailureNumber([&] { rows->MoveLast(); }), database_error::kNoCurrentRecord);
  EXPECT_EQ(FailureNumber([&] { rows->MovePrevious(); }), database_error::kNoCurrentRecord);
}

TEST_F(Rowsets, AStaticCursorMovesBothWays) {
  for (const CursorType cursor : {CursorType::kKeyset, CursorType::kStatic}) {
    const auto rows = Open(cursor);
    rows->MoveLast();
    EXPECT_EQ(rows->Text(code_name), QStringLiteral("Three"));
    rows->MovePrevious();
    EXPECT_EQ(rows->Text(code_name), QStringLiteral("Two"));
    rows->MoveFirst();
    rows->MovePrevious();
    EXPECT_TRUE(rows->Bof());
    EXPECT_FALSE(rows->Eof());
    EXPECT_EQ(FailureNumber([&] { rows->MovePrevious(); }), database_error::kNoCurrentRecord);
    rows->MoveNext();
    EXPECT_EQ(rows->Text(code_name), QStringLiteral("One"));
    rows->MoveTo(3);
    EXPECT_EQ(rows->Text(code_name), QStringLiteral("Three"));
    rows->MoveNext();
    rows->MovePrevious();
    EXPECT_EQ(rows->Text(code_name), QStringLiteral("Three"));
    EXPECT_EQ(FailureNumber([&] { rows->MoveTo(4); }), database_error::kNoCurrentRecord);
    EXPECT_EQ(FailureNumber([&] { rows->MoveTo(0); }), database_error::kNoCurrentRecord);
  }
}

TEST_F(Rowsets, AForwardOnlyCursorGoesForwardAndBackToTheFirstRow) {
  const auto rows = Open(CursorType::kForwardOnly);
  rows->MoveFirst();
  EXPECT_EQ(rows->Text(code_name), QStringLiteral("One"));
  rows->MoveNext();
  EXPECT_EQ(FailureNumber([&] { rows->MovePrevious(); }), database_error::kForwardOnly);
  EXPECT_EQ(FailureNumber([&] { rows->MoveLast(); }), database_error::kForwardOnly);
  EXPECT_EQ(FailureNumber([&] { rows->MoveTo(1); }), database_error::kForwardOnly);
  EXPECT_EQ(rows->RecordCount(), 3);
  rows->MoveFirst();
  EXPECT_EQ(rows->Text(code_name), QStringLiteral("One"));
}

TEST_F(Rowsets, AStaticCursorDoesNotSeeLaterChanges) {
  const auto rows = Open(CursorType::kStatic);
  connection->Execute(QStringLiteral("delete * from t"));
  EXPECT_EQ(rows->RecordCount(), 3);
}

TEST_F(Rowsets, ReadersKeepTheirRowsWhenTheTableGoes) {
  const auto streaming = Open(CursorType::kForwardOnly);
  const auto keyset = Open(CursorType::kKeyset);
  streaming->MoveNext();
  connection->Execute(QStringLiteral("DROP TABLE [t]"));
  EXPECT_EQ(streaming->Text(code_name), QStringLiteral("Two"));
  EXPECT_EQ(streaming->AbsolutePosition(), 2);
  streaming->MoveNext();
  EXPECT_EQ(streaming->Text(code_name), QStringLiteral("Three"));
  EXPECT_EQ(streaming->AbsolutePosition(), 3);
  streaming->MoveNext();
  EXPECT_TRUE(streaming->Eof());
  EXPECT_EQ(keyset->RecordCount(), 3);
}

TEST_F(Rowsets, FieldsAreNamedInAnyCase) {
  const auto rows = Open(CursorType::kForwardOnly);
  EXPECT_EQ(rows->Field(QStringLiteral("CODENAME")), 0);
  EXPECT_EQ(rows->FieldCount(), 4);
  EXPECT_EQ(rows->FieldName(1), QStringLiteral("Word"));
  EXPECT_EQ(FailureNumber([&] { rows->Field(QStringLiteral("absent")); }), database_error::kItemNotFound);
}

TEST_F(Rowsets, TextsAndNullsAreTold) {
  const auto rows = Open(CursorType::kForwardOnly);
  EXPECT_EQ(rows->TextOrBlank(word), QStringLiteral("first"));
  EXPECT_EQ(rows->Text(n), QStringLiteral("1"));
  rows->MoveNext();
  rows->MoveNext();
  EXPECT_TRUE(rows->IsNull(word));
  EXPECT_EQ(rows->TextOrBlank(word), QStringLiteral(" "));
  try {
    rows->Text(word);
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), 94);
    EXPECT_EQ(failure.Description(), QStringLiteral("Invalid use of Null"));
  }
  EXPECT_EQ(FailureNumber([&] { rows->Number<int>(n); }), 94);
  EXPECT_EQ(FailureNumber([&] { rows->Number<double>(r); }), 94);
  EXPECT_FALSE(rows->YesNo(n));
}

TEST_F(Rowsets, NumbersAreCheckedAndRounded) {
  const auto value = [&](const char* expression) {
    return Recordset::OpenStatement(
        connection, QStringLiteral("SELECT %1 AS v FROM t WHERE n = 1").arg(QString::fromLatin1(expression)));
  };
  EXPECT_EQ(value("255")->Number<std::uint8_t>(0), 255);
  EXPECT_THROW(value("256")->Number<std::uint8_t>(0), OverflowError);
  EXPECT_THROW(value("-1")->Number<std::uint8_t>(0), OverflowError);
  EXPECT_EQ(value("-32768")->Number<std::int16_t>(0), -32768);
  EXPECT_THROW(value("32768")->Number<std::int16_t>(0), OverflowError);
  EXPECT_THROW(value("2147483648")->Number<std::int32_t>(0), OverflowError);
  EXPECT_THROW(value("1e300")->Number<std::int32_t>(0), OverflowError);
  EXPECT_EQ(value("2.5")->Number<std::int16_t>(0), 2);
  EXPECT_EQ(value("3.5")->Number<std::int16_t>(0), 4);
  EXPECT_EQ(value("' 12 '")->Number<std::int16_t>(0), 12);
  EXPECT_EQ(value("'1.5'")->Number<double>(0), 1.5);
  EXPECT_EQ(value("7")->Number<double>(0), 7.0);
  EXPECT_EQ(FailureNumber([&] { value("'loud'")->Number<int>(0); }), 13);
  EXPECT_EQ(FailureNumber([&] { value("''")->Number<int>(0); }), 13);
  EXPECT_EQ(FailureNumber([&] { value("zeroblob(4)")->Number<int>(0); }), 13);
}

TEST_F(Rowsets, YesAndNoAreReadFromNumbersAndWords) {
  const auto value = [&](const char* expression) {
    return Recordset::OpenStatement(
               connection,
               QStringLiteral("SELECT %1 AS v FROM t WHERE n = 1").arg(QString::fromLatin1(expression)))
        ->YesNo(0);
  };
  EXPECT_TRUE(value("1"));
  EXPECT_TRUE(value("-1"));
  EXPECT_FALSE(value("0"));
  EXPECT_TRUE(value("'True'"));
  EXPECT_FALSE(value("'no'"));
  EXPECT_FALSE(value("NULL"));
  EXPECT_EQ(FailureNumber([&] { value("'perhaps'"); }), 13);
}

TEST_F(Rowsets, FindGoesForwardFromTheCurrentRow) {
  for (const CursorType cursor : {CursorType::kForwardOnly, CursorType::kKeyset, CursorType::kStatic}) {
    const auto rows = Open(cursor);
    rows->Find(QStringLiteral("CodeName = 'One'"));
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    rows->Find(QStringLiteral("codename='TWO'"));
    EXPECT_EQ(rows->AbsolutePosition(), 2);
    rows->Find(QStringLiteral("[Word] = 'first'"));
    EXPECT_TRUE(rows->Eof());
  }
  const auto rows = Open();
  rows->Find(QStringLiteral("Word = 'Second'"));
  EXPECT_TRUE(rows->Eof()) << "texts that are no CodeName compare exactly";
  rows->MoveFirst();
  rows->Find(QStringLiteral("n = 2"));
  EXPECT_EQ(rows->Text(code_name), QStringLiteral("Two"));
  EXPECT_EQ(FailureNumber([&] { rows->Find(QStringLiteral("CodeName = 'it's'")); }), database_error::kSyntax);
  EXPECT_EQ(FailureNumber([&] { rows->Find(QStringLiteral("CodeName")); }), database_error::kSyntax);
}

TEST_F(Rowsets, AMissingTableIsError3078) {
  EXPECT_EQ(FailureNumber([&] { Recordset::OpenTable(connection, QStringLiteral("[No Such Tune]")); }), 3078);
  EXPECT_EQ(FailureNumber([&] { Recordset::OpenTable(connection, QStringLiteral("[a]b]")); }),
            database_error::kSyntax);
}

TEST_F(Rowsets, AClosedRecordsetOrConnectionHasNoRows) {
  const auto first = Open(CursorType::kForwardOnly);
  first->Close();
  first->Close();
  EXPECT_TRUE(first->Eof());
  const auto second = Open(CursorType::kForwardOnly);
  const auto third = Open();
  connection->Close();
  connection->Close();
  EXPECT_FALSE(connection->IsOpen());
  EXPECT_TRUE(second->Eof());
  EXPECT_EQ(FailureNumber([&] { third->Text(0); }), database_error::kNoCurrentRecord);
  EXPECT_NE(FailureNumber([&] { connection->Execute(QStringLiteral("delete * from t")); }), 0);
  EXPECT_NE(FailureNumber([&] { Open(); }), 0);
}

TEST_F(Rowsets, AStatementWithoutRowsIsNoRecordset) {
  EXPECT_EQ(FailureNumber([&] { Recordset::OpenStatement(connection, QStringLiteral("delete * from t")); }),
            database_error::kNotAStatement);
  EXPECT_EQ(Names().size(), 3);
}

}  // namespace
}  // namespace zelmar::testing_support
