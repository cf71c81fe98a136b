// The order of titles and names, and that it is no more than an order.
#include "store/people_collation.h"

#include <algorithm>
#include <random>

#include "store/store_fixture.h"

namespace zelmar::testing_support {
namespace {

// The bytes that the engine sees.
std::string_view Utf8(const char8_t* text) {
  return reinterpret_cast<const char*>(text);
}

int Sign(int number) {
  return (number > 0) - (number < 0);
}

TEST(PeoplesOrder, GoesByLettersWhateverTheirCaseAndTheirAccents) {
  const char8_t* const sorted[] = {u8"",        u8"Air",     u8"Étude",   u8"europa", u8"Evening", u8"Händel",
                                   u8"HANDELS", u8"o Carol", u8"O'Brien", u8"Ode",    u8"Œuvre",   u8"of",
                                   u8"Øresund", u8"Strauß",  u8"Straut",  u8"Zumba",  u8"Ωδη",     u8"Ария"};
  for (std::size_t i = 0; i < std::size(sorted); ++i)
    for (std::size_t j = 0; j < std::size(sorted); ++j)
      EXPECT_EQ(Sign(CompareAsPeopleDo(Utf8(sorted[i]), Utf8(sorted[j]))),
                Sign(static_cast<int>(i) - static_cast<int>(j)))
          << Utf8(sorted[i]) << " and " << Utf8(sorted[j]);
}

TEST(PeoplesOrder, CountsNumbersByTheirValue) {
  const char* const sorted[] = {"No. 1",  "No. 2 in C", "No. 02 in D", "No. 9",   "No. 10",
                                "No. 13", "No. 19",     "No. 100",     "No. 129", "No. x"};
  for (std::size_t i = 0; i + 1 < std::size(sorted); ++i)
    EXPECT_LT(CompareAsPeopleDo(sorted[i], sorted[i + 1]), 0) << sorted[i];
  EXPECT_LT(CompareAsPeopleDo("99999999999999999999998", "99999999999999999999999"), 0);
  EXPECT_LT(CompareAsPeopleDo("1 2", "1 10"), 0);
  EXPECT_LT(CompareAsPeopleDo("0", "1"), 0);
}

TEST(PeoplesOrder, TextsThatDifferInCaseAccentsOrZerosStandByTheirBytes) {
  const char8_t* const sorted[] = {u8"ETUDE 2", u8"Etude 02", u8"Etude 2",
                                   u8"etude 2", u8"étude 2",  u8"Étude 2"};
  for (const char8_t* a : sorted)
    for (const char8_t* b : sorted)
      EXPECT_EQ(Sign(CompareAsPeopleDo(Utf8(a), Utf8(b))), Sign(Utf8(a).compare(Utf8(b))))
          << Utf8(a) << Utf8(b);
  // An accent that is a sign of its own is an accent too.
  EXPECT_LT(CompareAsPeopleDo(Utf8(u8"e\u0301tude A"), Utf8(u8"étude B")), 0);
  EXPECT_LT(CompareAsPeopleDo(Utf8(u8"étude A"), Utf8(u8"e\u0301tude B")), 0);
}

TEST(PeoplesOrder, BytesThatAreNoTextStandBehindAllLetters) {
  for (const char* bytes : {"\xFF", "\x80", "\xC3", "\xC3(", "\xE2\x82", "\xF0\x9F\x98", "\xC0\xAF"}) {
    EXPECT_GT(CompareAsPeopleDo(bytes, "zz"), 0);
    EXPECT_GT(CompareAsPeopleDo(bytes, Utf8(u8"я")), 0);
    EXPECT_EQ(CompareAsPeopleDo(bytes, bytes), 0);
  }
}

// A sort by an order that contradicts itself never ends, or loses rows.
TEST(PeoplesOrder, NeverContradictsItself) {
  std::mt19937 chance(20240607);
  const std::string pieces[] = {"a", "A",        "b", "0",        "1",        "10", "01",   " ",
                                "-", "\xC3\xA9", "e", "\xCC\x81", "\xC3\x86", "ae", "\xFF", "\xC3"};
  std::vector<std::string> texts;
  for (int i = 0; i < 120; ++i) {
    std::string text;
    for (auto length = chance() % 5; length > 0; --length) text += pieces[chance() % std::size(pieces)];
    texts.push_back(text);
  }
  for (const auto& a : texts)
    for (const auto& b : texts) {
      const int order = CompareAsPeopleDo(a, b);
      EXPECT_EQ(Sign(order), -Sign(CompareAsPeopleDo(b, a)));
      EXPECT_EQ(order == 0, a == b);
      for (const auto& c : texts)
        if (order < 0 && CompareAsPeopleDo(b, c) < 0) {
          ASSERT_LT(CompareAsPeopleDo(a, c), 0);
        }
    }
}

class OrderedStatements : public StoreTest {
 protected:
  OrderedStatements() {
    const auto connection = database.Connect();
    connection->Execute(
        QStringLiteral("CREATE TABLE names (Name TEXT, Code TEXT COLLATE NOCASE, n INTEGER)"));
    int number = 0;
    for (const char16_t* name : {u"Zelter", u"élan", u"Elgar", u"ELGAR", u"Sonata 10", u"Sonata 9", u"Eben"})
      database.AddRow(QStringLiteral("names"),
                      {QString::fromUtf16(name), QString::fromUtf16(name), ++number});
  }

  QStringList Column(const char* statement) const { return database.Column(QString::fromLatin1(statement)); }
  static QStringList Names(std::initializer_list<const char16_t*> names) {
    QStringList list;
    for (const char16_t* name : names) list.append(QString::fromUtf16(name));
    return list;
  }

  const QStringList sorted =
      Names({u"Eben", u"élan", u"ELGAR", u"Elgar", u"Sonata 9", u"Sonata 10", u"Zelter"});
};

TEST_F(OrderedStatements, TextsStandInTheOrderOfPeople) {
  EXPECT_EQ(Column("SELECT Name FROM names ORDER BY Name"), sorted);
  EXPECT_EQ(Column("SELECT Name FROM names ORDER BY names!Name asc"), sorted);
  EXPECT_EQ(Column("SELECT Name FROM names ORDER BY 1"), sorted);
  EXPECT_EQ(Column("SELECT Name & '!' AS shout FROM names ORDER BY shout").first(), QStringLiteral("Eben!"));
  EXPECT_EQ(Column("SELECT Name FROM names ORDER BY Name & ''"), sorted);
  EXPECT_EQ(Column("SELECT Code FROM names ORDER BY Code"), sorted);
  QStringList backwards = sorted;
  std::reverse(backwards.begin(), backwards.end());
  EXPECT_EQ(Column("SELECT Name FROM names ORDER BY Name DESC"), backwards);
}

TEST_F(OrderedStatements, ALaterKeyCountsWithinTheSameTextAlone) {
  database.AddRow(QStringLiteral("names"), {QStringLiteral("Elgar"), QStringLiteral("x"), 0});
  EXPECT_EQ(Rows(QStringLiteral("SELECT Name, n FROM names WHERE Code IN ('Elgar', 'x') ORDER BY Name, n")),
            QStringList({QStringLiteral("ELGAR|4"), QStringLiteral("Elgar|0"), QStringLiteral("Elgar|3")}));
}

TEST_F(OrderedStatements, NumbersStayNumbersAndNullsStandFirst) {
  database.AddRow(QStringLiteral("names"),
                  {QVariant(QMetaType(QMetaType::QString)), QStringLiteral("y"), 100});
  EXPECT_EQ(Column("SELECT n FROM names ORDER BY n").last(), QStringLiteral("100"));
  EXPECT_EQ(Column("SELECT -n FROM names ORDER BY -n").first(), QStringLiteral("-100"));
  EXPECT_EQ(Column("SELECT n FROM names ORDER BY Name").first(), QStringLiteral("100"));
}

TEST_F(OrderedStatements, UnionsNestedStatementsAndShapesKeepTheOrder) {
  EXPECT_EQ(Column("SELECT Name FROM names WHERE n < 4 UNION SELECT Name FROM names ORDER BY Name"), sorted);
  EXPECT_EQ(Column("SELECT Name FROM names WHERE n < 4 UNION SELECT Name FROM names ORDER BY 1"), sorted);
  EXPECT_EQ(Column("SELECT x FROM (SELECT Name AS x FROM names ORDER BY Name)"), sorted);
  const auto rows = Recordset::OpenStatement(
      database.Connect(),
      QStringLiteral("SHAPE {select distinct 1 as one from names} APPEND ({select Name, 1 as one "
                     "from names order by Name} RELATE one TO one) AS kids"));
  const auto kids = rows->Chapter(QStringLiteral("kids"));
  EXPECT_EQ(kids->Text(0), QStringLiteral("Eben"));
  kids->MoveNext();
  EXPECT_EQ(kids->Text(0), QString::fromUtf8("élan"));
}

TEST_F(OrderedStatements, EqualityDistinctionAndGroupsStayExact) {
  EXPECT_EQ(Column("SELECT n FROM names WHERE Name = 'ELGAR' ORDER BY Name"),
            QStringList(QStringLiteral("4")));
  EXPECT_EQ(Column("SELECT n FROM names WHERE Name = 'elan' ORDER BY Name"), QStringList());
  EXPECT_EQ(Column("SELECT DISTINCT Name FROM names ORDER BY Name"), sorted);
  EXPECT_EQ(Column("SELECT Name FROM names GROUP BY Name ORDER BY Name"), sorted);
  EXPECT_EQ(Column("SELECT DISTINCT Code FROM names ORDER BY Code").size(), 6) << "that column ignores case";
  EXPECT_EQ(Column("SELECT Code FROM names GROUP BY Code ORDER BY Code").size(), 6);
}

TEST_F(OrderedStatements, TopGoesByTheOrderAndKeepsExactTies) {
  EXPECT_EQ(Column("SELECT TOP 2 Name FROM names ORDER BY Name"), sorted.mid(0, 2));
  EXPECT_EQ(Column("SELECT TOP 3 Name FROM names ORDER BY Name"), sorted.mid(0, 3))
      << "ELGAR is no tie of Elgar";
  EXPECT_EQ(Column("SELECT TOP 3 Code FROM names ORDER BY Code"), sorted.mid(0, 3));
  EXPECT_EQ(Column("SELECT TOP 1 Name FROM names ORDER BY Name DESC"), sorted.mid(6));
  database.AddRow(QStringLiteral("names"), {QStringLiteral("Eben"), QStringLiteral("z"), 50});
  EXPECT_EQ(Column("SELECT TOP 1 n FROM names ORDER BY Name").size(), 2);
  EXPECT_EQ(Column("SELECT TOP 2 n FROM names ORDER BY n"), Names({u"1", u"2"}));
}

// The engine's other programs do not know the order; so nothing that stays in the file may ask for it.
TEST_F(OrderedStatements, NothingInTheFileAsksForTheOrder) {
  database.Execute(QStringLiteral("SELECT * INTO copied FROM names ORDER BY Name"));
  EXPECT_EQ(Column("SELECT Name FROM copied"), sorted);
  EXPECT_EQ(Column("SELECT name FROM sqlite_master WHERE sql LIKE '*PEOPLE*'"), QStringList());
}

}  // namespace
}  // namespace zelmar::testing_support
