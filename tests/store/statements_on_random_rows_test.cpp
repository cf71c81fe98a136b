// What statements give of random tables, against plain filtering, sorting and counting of the same rows.
#include <QSet>
#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "store/people_collation.h"
#include "store/statement_dialect.h"
#include "store/store_fixture.h"
#include "support/dice.h"

namespace zelmar::testing_support {
namespace {

struct Piece {
  QString code;
  QString title;
  QString composer;
  bool anonymous = false;  // no composer at all
  int rank = 0;
  int group = 0;
};

class RandomRows : public StoreTest {
 protected:
  RandomRows() : connection(database.Connect()) {
    connection->Execute(
        QStringLiteral("CREATE TABLE pieces (Code TEXT COLLATE NOCASE, Title TEXT, Composer TEXT, Rank "
                       "INTEGER, Grp INTEGER)"));
  }

  static QString Word(Dice& dice, const QString& letters, int most) {
    QString word;
    for (int length = dice(most + 1); length > 0; --length)
      word.append(letters[dice(static_cast<int>(letters.size()))]);
    return word;
  }

  void Fill(Dice& dice, int count, const QString& letters) {
    static const char* const kComposers[] = {"Various", "Bach", "various", "O'Carolan", "Händel", ""};
    connection->Together([&] {
      for (int i = 0; i < count; ++i) {
        Piece piece;
        piece.code = QStringLiteral("P%1").arg(i);
        piece.title = Word(dice, letters, 6);
        piece.composer = QString::fromUtf8(kComposers[dice(6)]);
        piece.anonymous = dice(7) == 0;
        piece.rank = dice(9);
        piece.group = dice(4);
        pieces.push_back(piece);
        connection->Execute(
            QStringLiteral("INSERT INTO pieces VALUES (%1,%2,%3,%4,%5)")
                .arg(StatementDialect::Quoted(piece.code), StatementDialect::Quoted(piece.title),
                     piece.anonymous ? QStringLiteral("NULL") : StatementDialect::Quoted(piece.composer))
                .arg(piece.rank)
                .arg(piece.group));
      }
    });
  }

  template <typename Keep>
  QStringList Codes(Keep keep) const {
    QStringList codes;
    for (const Piece& piece : pieces)
      if (keep(piece)) codes.append(piece.code);
    return codes;
  }

  QStringList Found(const QString& statement) const { return Rows(statement); }

  std::shared_ptr<Connection> connection;
  std::vector<Piece> pieces;
};

// One sign of the pattern after the other, with every length for a wildcard.
bool PlainLike(QStringView text, QStringView pattern) {
  if (pattern.isEmpty()) return text.isEmpty();
  if (pattern[0] == u'%' || pattern[0] == u'*') {
    for (qsizetype taken = 0; taken <= text.size(); ++taken)
      if (PlainLike(text.mid(taken), pattern.mid(1))) return true;
    return false;
  }
  return !text.isEmpty() && (pattern[0] == u'_' || pattern[0] == text[0]) &&
         PlainLike(text.mid(1), pattern.mid(1));
}

TEST_F(RandomRows, AreFoundByPatternsWithEitherWildcard) {
  Dice dice(1);
  Fill(dice, 120, QStringLiteral("aab"));
  for (int i = 0; i < 120; ++i) {
    const QString pattern = Word(dice, QStringLiteral("aab%*_"), 6);
    EXPECT_EQ(Found(QStringLiteral("SELECT Code FROM pieces WHERE Title LIKE ") +
                    StatementDialect::Quoted(pattern)),
              Codes([&](const Piece& piece) { return PlainLike(piece.title, pattern); }))
        << pattern.toStdString();
  }
}

TEST_F(RandomRows, AreFoundByPatternsThatHoldMarksOfOtherDialects) {
  Dice dice(2);
  Fill(dice, 120, QStringLiteral("a[]?#!^-'\""));
  for (int i = 0; i < 120; ++i) {
    const QString pattern = Word(dice, QStringLiteral("a[]?#!^-'\"*"), 4);
    EXPECT_EQ(Found(QStringLiteral("SELECT Code FROM pieces WHERE Title LIKE ") +
                    StatementDialect::Quoted(pattern)),
              Codes([&](const Piece& piece) { return PlainLike(piece.title, pattern); }))
        << pattern.toStdString();
  }
}

TEST_F(RandomRows, AreNotFoundByWhatLikeRefuses) {
  Dice dice(3);
  Fill(dice, 60, QStringLiteral("ab"));
  EXPECT_EQ(Found(QStringLiteral("SELECT Code FROM pieces WHERE Title NOT LIKE 'a*' AND Rank > 3")),
            Codes([](const Piece& piece) { return !piece.title.startsWith(u'a') && piece.rank > 3; }));
}

TEST_F(RandomRows, AreFoundByAnyTextJustAsItStands) {
  Dice dice(4);
  Fill(dice, 150, QStringLiteral("aA'\"[];-*%_&!\n\u00e9(){}`\\"));
  for (const Piece& piece : pieces)
    EXPECT_EQ(Found(QStringLiteral("select [code] from [pieces] where [title] = ") +
                    StatementDialect::Quoted(piece.title)),
              Codes([&](const Piece& other) { return other.title == piece.title; }))
        << piece.title.toStdString();
}

TEST_F(RandomRows, AreTheFirstOfTheirOrderWithAllThatTie) {
  Dice dice(5);
  Fill(dice, 50, QStringLiteral("ab"));
  for (int top = 1; top <= 55; ++top)
    for (const bool descending : {false, true}) {
      std::vector<int> ranks;
      for (const Piece& piece : pieces) ranks.push_back(piece.rank);
      std::sort(ranks.begin(), ranks.end());
      if (descending) std::reverse(ranks.begin(), ranks.end());
      const int last = ranks[static_cast<std::size_t>(std::min(top, 50) - 1)];
      QStringList wanted =
          Codes([&](const Piece& piece) { return descending ? piece.rank >= last : piece.rank <= last; });
      const QStringList found = Found(QStringLiteral("SELECT TOP %1 Code FROM pieces ORDER BY pieces!rank%2")
                                          .arg(top)
                                          .arg(descending ? QStringLiteral(" DESC") : QString()));
      QStringList sorted = found;
      sorted.sort();
      wanted.sort();
      EXPECT_EQ(sorted, wanted) << top << descending;
      // In their order, too.
      int before = descending ? 100 : -1;
      for (const QString& code : found) {
        const int rank = pieces[static_cast<std::size_t>(code.mid(1).toInt())].rank;
        EXPECT_TRUE(descending ? rank <= before : rank >= before);
        before = rank;
      }
    }
}

TEST_F(RandomRows, TieOnlyWhenAllThatOrdersThemIsEqual) {
  Dice dice(6);
  Fill(dice, 60, QStringLiteral("ab"));
  std::vector<std::pair<int, int>> keys;
  for (const Piece& piece : pieces) keys.emplace_back(piece.rank, piece.group);
  std::sort(keys.begin(), keys.end());
  for (const int top : {1, 2, 5, 17, 40, 59, 60}) {
    const auto last = keys[static_cast<std::size_t>(top - 1)];
    QStringList wanted =
        Codes([&](const Piece& piece) { return std::pair(piece.rank, piece.group) <= last; });
    QStringList found = Found(QStringLiteral("SELECT TOP %1 code FROM pieces ORDER BY Rank, Grp").arg(top));
    found.sort();
    wanted.sort();
    EXPECT_EQ(found, wanted) << top;
  }
}

TEST_F(RandomRows, AreCountedFromThoseThatPassTheConditionOnly) {
  Dice dice(7);
  Fill(dice, 60, QStringLiteral("ab"));
  for (const int top : {1, 3, 8}) {
    std::vector<int> ranks;
    for (const Piece& piece : pieces)
      if (piece.group == 2) ranks.push_back(piece.rank);
    std::sort(ranks.begin(), ranks.end());
    ASSERT_GT(ranks.size(), 8U);
    const int last = ranks[static_cast<std::size_t>(top - 1)];
    QStringList wanted = Codes([&](const Piece& piece) { return piece.group == 2 && piece.rank <= last; });
    QStringList found =
        Found(QStringLiteral("SELECT TOP %1 code FROM pieces WHERE Grp = 2 ORDER BY Rank").arg(top));
    found.sort();
    wanted.sort();
    EXPECT_EQ(found, wanted) << top;
  }
}

TEST_F(RandomRows, AreNamedByATitleAndItsComposer) {
  Dice dice(8);
  Fill(dice, 80, QStringLiteral("ab'"));
  QStringList wanted;
  for (const Piece& piece : pieces) {
    const QString composer = piece.anonymous ? QString() : piece.composer;
    wanted.append(piece.code + u'|' +
                  (composer == QLatin1String("Various") ? piece.title : piece.title + " by " + composer));
  }
  wanted.sort();
  QStringList found =
      Found(QStringLiteral("SELECT Code, IIf([composer]='Various',[title],[title] & ' by ' & [composer]) AS "
                           "MyTitle FROM pieces ORDER BY Title"));
  found.sort();
  EXPECT_EQ(found, wanted);
}

TEST_F(RandomRows, AreChosenByConditionsWithinConditions) {
  Dice dice(9);
  Fill(dice, 60, QStringLiteral("ab"));
  QStringList wanted;
  for (const Piece& piece : pieces)
    wanted.append(piece.rank > 4 ? (piece.group == 1 ? "x" : "y")
                                 : piece.title + QString::number(piece.rank));
  EXPECT_EQ(Found(QStringLiteral("SELECT IIf(Rank > 4, IIf(Grp=1,'x','y'), Title & Rank) FROM pieces")),
            wanted);
}

TEST_F(RandomRows, AreDeletedByTheWordsDeleteStarFrom) {
  Dice dice(10);
  Fill(dice, 60, QStringLiteral("ab"));
  connection->Execute(QStringLiteral("DELETE * FROM pieces WHERE pieces!Rank < 4 and title like 'a*'"));
  EXPECT_EQ(Found(QStringLiteral("select code from pieces")),
            Codes([](const Piece& piece) { return piece.rank >= 4 || !piece.title.startsWith(u'a'); }));
  connection->Execute(QStringLiteral("delete * from [pieces]"));
  EXPECT_EQ(Found(QStringLiteral("select code from pieces")), QStringList());
}

TEST_F(RandomRows, AreCopiedWithTheirTable) {
  Dice dice(11);
  Fill(dice, 40, QStringLiteral("ab'"));
  const auto before = Found(QStringLiteral("select * from pieces"));
  for (const char* const name :
       {"copy", "a copy's name", "select", "x;y", "1", "tune-4 (b)", "\u00c9t\u00e9"}) {
    const QString table = StatementDialect::Bracketed(QString::fromUtf8(name));
    connection->Execute(QStringLiteral("select * into %1 from pieces").arg(table));
    EXPECT_EQ(Found(QStringLiteral("select * from ") + table), before) << name;
    EXPECT_NE(FailureNumber(
                  [&] { connection->Execute(QStringLiteral("select * into %1 from pieces").arg(table)); }),
              0)
        << name;
    EXPECT_EQ(Found(QStringLiteral("select * from ") + table), before) << name;
    connection->Execute(QStringLiteral("DROP TABLE ") + table);
    EXPECT_EQ(FailureNumber([&] { Found(QStringLiteral("select * from ") + table); }),
              error_number::kTableNotFound)
        << name;
  }
}

TEST_F(RandomRows, AreGroupedUnderTheirParents) {
  Dice dice(12);
  Fill(dice, 60, QStringLiteral("ab"));
  connection->Execute(QStringLiteral("CREATE TABLE groups (Number INTEGER, Name TEXT)"));
  for (int group = 0; group < 6; ++group)
    connection->Execute(QStringLiteral("INSERT INTO groups VALUES (%1,'group %1')").arg(group));
  const auto parents = Recordset::OpenStatement(
      connection,
      QStringLiteral("SHAPE {SELECT * FROM groups} AS parents APPEND ({select Code, Grp from pieces} AS "
                     "children RELATE 'Number' TO 'Grp') AS children"),
      CursorType::kStatic);
  int seen = 0;
  for (; !parents->Eof(); parents->MoveNext()) {
    const int group = parents->Number<int>(QStringLiteral("Number"));
    QStringList codes;
    for (const auto children = parents->Chapter(QStringLiteral("children")); !children->Eof();
         children->MoveNext())
      codes.append(children->Text(QStringLiteral("code")));
    EXPECT_EQ(codes, Codes([&](const Piece& piece) { return piece.group == group; })) << group;
    ++seen;
  }
  EXPECT_EQ(seen, 6);
}

TEST_F(RandomRows, StandInTheOrderOfPeople) {
  Dice dice(13);
  Fill(dice, 120, QStringLiteral("aAbBeE\u00e9\u00c9\u00f8 19'"));
  const QStringList titles = Found(QStringLiteral("SELECT Title FROM pieces ORDER BY Title"));
  ASSERT_EQ(titles.size(), 120);
  for (qsizetype i = 1; i < titles.size(); ++i)
    EXPECT_LE(CompareAsPeopleDo(titles[i - 1].toStdString(), titles[i].toStdString()), 0);
  QStringList down = Found(QStringLiteral("SELECT Title FROM pieces ORDER BY Title DESC"));
  std::reverse(down.begin(), down.end());
  EXPECT_EQ(down, titles);
}

TEST_F(RandomRows, AreToldApartByCaseAndAccents) {
  Dice dice(14);
  Fill(dice, 120, QStringLiteral("eE\u00e9\u00c9"));
  std::map<QString, int> counts;
  for (const Piece& piece : pieces) ++counts[piece.title];
  EXPECT_EQ(Found(QStringLiteral("SELECT DISTINCT Title FROM pieces")).size(),
            static_cast<qsizetype>(counts.size()));
  const QStringList grouped =
      Found(QStringLiteral("SELECT Title, Count(1) AS MyCount FROM pieces GROUP BY Title"));
  EXPECT_EQ(grouped.size(), static_cast<qsizetype>(counts.size()));
  for (const auto& [title, count] : counts) {
    EXPECT_TRUE(grouped.contains(title + u'|' + QString::number(count))) << title.toStdString();
    EXPECT_EQ(
        Found(QStringLiteral("SELECT Count(1) FROM pieces WHERE Title = ") + StatementDialect::Quoted(title)),
        QStringList(QString::number(count)));
  }
}

TEST_F(RandomRows, AreFoundByACodeNameInAnyCase) {
  Dice dice(15);
  Fill(dice, 12, QStringLiteral("ab"));
  EXPECT_EQ(Found(QStringLiteral("select CODE from PIECES where cOdE = 'p7'")),
            QStringList(QStringLiteral("P7")));
}

TEST_F(RandomRows, OfTwoTablesAreJoinedCountedAndUnited) {
  Dice dice(16);
  Fill(dice, 50, QStringLiteral("ab"));
  connection->Execute(QStringLiteral("CREATE TABLE themes (Code TEXT, No INTEGER, Rank INTEGER)"));
  QStringList joined;
  std::map<QString, int> counts;
  for (int i = 0; i < 60; ++i) {
    const int piece = dice(60);  // some belong to no piece
    connection->Execute(QStringLiteral("INSERT INTO themes VALUES ('P%1',%2,%2)").arg(piece).arg(i));
    if (piece < 50)
      joined.append(
          QStringLiteral("P%1|%2|%3").arg(piece).arg(i).arg(pieces[static_cast<std::size_t>(piece)].rank));
    ++counts[QStringLiteral("P%1").arg(piece)];
  }
  EXPECT_EQ(Found(QStringLiteral(
                "SELECT themes.Code, themes.No, pieces.Rank FROM themes INNER JOIN pieces ON themes.Code = "
                "pieces.Code ORDER BY themes!rank")),
            joined);
  const QStringList tops =
      Found(QStringLiteral("SELECT TOP 7 themes.Code, themes.No, pieces.Rank FROM themes INNER JOIN pieces "
                           "ON themes.Code = pieces.Code ORDER BY "
                           "themes!rank"));
  EXPECT_EQ(tops, joined.mid(0, 7));
  for (const auto& [code, count] : counts)
    EXPECT_EQ(Found(QStringLiteral(
                        "SELECT themes.Code, Count(1) AS MyCount From themes GROUP BY themes.Code  HAVING "
                        "themes.Code='%1'")
                        .arg(code)),
              QStringList(QStringLiteral("%1|%2").arg(code).arg(count)));
  QSet<QString> all;
  for (const Piece& piece : pieces) all.insert(piece.code);
  for (const auto& [code, count] : counts) all.insert(code);
  EXPECT_EQ(
      Found(QStringLiteral("Select distinct code from pieces UNION select distinct code from themes")).size(),
      all.size());
}

TEST_F(RandomRows, StayWhereAStatementIsRefused) {
  Dice dice(17);
  Fill(dice, 5, QStringLiteral("ab"));
  for (const char* const statement :
       {"delete * from pieces; delete * from tblMelodies", "delete * from pieces where Title = 'a",
        "delete * from [pieces", "delete * from pieces where (Rank > 1", "PRAGMA user_version = 7",
        "ATTACH DATABASE 'x' AS y", "VACUUM"})
    EXPECT_NE(FailureNumber([&] { connection->Execute(QString::fromLatin1(statement)); }), 0) << statement;
  EXPECT_EQ(Found(QStringLiteral("select code from pieces")).size(), 5);
}

TEST_F(RandomRows, AreHeldByTheirTextsThoughTheseReadAsPartsOfAStatement) {
  const char* const kTexts[] = {"'; delete * from pieces; --",
                                "a & b",
                                "x!y",
                                "[title]",
                                "IIf(1,2,3)",
                                "TOP 5",
                                "/* */",
                                "-- no",
                                "{SELECT}",
                                "like '*'",
                                "\\'",
                                "%",
                                "*",
                                "\"quoted\"",
                                "`tick`",
                                "?",
                                ":name",
                                "@x"};
  int number = 0;
  for (const char* const text : kTexts) {
    connection->Execute(QStringLiteral("INSERT INTO pieces VALUES ('T%1',%2,NULL,0,0)")
                            .arg(number)
                            .arg(StatementDialect::Quoted(QString::fromLatin1(text))));
    EXPECT_EQ(Found(QStringLiteral("select code, title from pieces where title = ") +
                    StatementDialect::Quoted(QString::fromLatin1(text))),
              QStringList(QStringLiteral("T%1|").arg(number) + QString::fromLatin1(text)));
    ++number;
  }
}

// --- The order itself ---

TEST(OrderOfPeople, IsAnOrderOfAllTexts) {
  Dice dice(18);
  std::vector<std::string> texts;
  const QString letters = QStringLiteral("aAbe\u00e9\u00c9\u00df\u00f80129 '-");
  for (int i = 0; i < 60; ++i) {
    QString text;
    for (int length = dice(6); length > 0; --length)
      text.append(letters[dice(static_cast<int>(letters.size()))]);
    texts.push_back(text.toStdString());
  }
  const auto sign = [](int number) { return (number > 0) - (number < 0); };
  for (const auto& a : texts)
    for (const auto& b : texts) {
      EXPECT_EQ(sign(CompareAsPeopleDo(a, b)), -sign(CompareAsPeopleDo(b, a))) << a << " and " << b;
      EXPECT_EQ(CompareAsPeopleDo(a, b) == 0, a == b) << a << " and " << b;
      for (const auto& c : texts)
        if (CompareAsPeopleDo(a, b) < 0 && CompareAsPeopleDo(b, c) < 0) {
          EXPECT_LT(CompareAsPeopleDo(a, c), 0) << a << " and " << b << " and " << c;
        }
    }
}

TEST(OrderOfPeople, PutsCaseAndAccentsBehindTheLettersAndNumbersByTheirValue) {
  const std::pair<const char*, const char*> kPairs[] = {{"\u00c9t\u00e9 a", "ete b"},
                                                        {"ETE a", "\u00e9t\u00e9 b"},
                                                        {"No 2", "no 10"},
                                                        {"NO 9", "No 10"},
                                                        {"Sonata 2 B", "sonata 10 A"},
                                                        {"apple", "Banana"},
                                                        {"Zebra 1", "zebra 02"},
                                                        {"H\u00e4ndel", "Handelz"}};
  for (const auto& [first, second] : kPairs)
    EXPECT_LT(CompareAsPeopleDo(first, second), 0) << first << " and " << second;
}

}  // namespace
}  // namespace zelmar::testing_support
