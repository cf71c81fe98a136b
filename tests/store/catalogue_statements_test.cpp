// The statements of the catalogue, word for word, on a small library.
#include "store/store_fixture.h"

namespace zelmar::testing_support {
namespace {

class CatalogueStatements : public StoreTest {
 protected:
  CatalogueStatements() {
    Add(u"Moon", u"Moonlight Sonata", u"Beethoven", u"Piano Solo", 3);
    Add(u"Fur", u"Bagatelle", u"Beethoven", u"Piano Solo", 1);
    Add(u"Danny", u"Danny Boy", u"Various", u"Folk Song", 3);
    Add(u"Storm", u"The Storm", u"Vivaldi", u"Concerto", 2);
    database.AddRow(QStringLiteral("tblComposer"),
                    {QStringLiteral("Beethoven"), QStringLiteral("Ludwig van"), 1770, 1827,
                     QStringLiteral("Germany"), QStringLiteral("Classical")});
    database.AddRow(QStringLiteral("tblComposer"),
                    {QStringLiteral("Vivaldi"), QStringLiteral("Antonio"), 1678, 1741,
                     QStringLiteral("Italy"), QStringLiteral("Baroque")});
    database.AddRow(QStringLiteral("tblComposer"), {QStringLiteral("Various"), QStringLiteral(" "), 0, 0,
                                                    QStringLiteral(" "), QStringLiteral("Not Applicable")});
  }

  void Add(const char16_t* code_name, const char16_t* title, const char16_t* composer,
           const char16_t* category, int rank) {
    SampleTune tune;
    tune.code_name = QString::fromUtf16(code_name);
    tune.title = QString::fromUtf16(title);
    tune.composer = QString::fromUtf16(composer);
    tune.category = QString::fromUtf16(category);
    tune.country = QStringLiteral("Ireland");
    tune.rank = rank;
    SampleTheme theme;
    theme.rank = rank * 10;
    theme.notes = tune.title + QStringLiteral(" theme");
    tune.themes = {theme};
    tune.words = {{1, 1, 0, QStringLiteral("la")}};
    tune.events = SampleMelody({QStringLiteral("C4"), QStringLiteral("D4")});
    database.AddTune(tune);
  }
};

TEST_F(CatalogueStatements, TheOpenListJoinsTitleAndComposerExceptForVarious) {
  EXPECT_EQ(Rows(QStringLiteral(
                "SELECT IIf([composer]='Various',[title],[title] & ' by ' & [composer]) AS MyTitle, "
                "CodeName  FROM tblMelodies ORDER BY Title")),
            QStringList({QStringLiteral("Bagatelle by Beethoven|Fur"), QStringLiteral("Danny Boy|Danny"),
                         QStringLiteral("Moonlight Sonata by Beethoven|Moon"),
                         QStringLiteral("The Storm by Vivaldi|Storm")}));
}

TEST_F(CatalogueStatements, TheOpenListCountsANullAsEmpty) {
  database.Execute(QStringLiteral("UPDATE tblMelodies SET Composer = NULL WHERE CodeName = 'Storm'"));
  EXPECT_EQ(Rows(QStringLiteral(
                     "SELECT IIf([composer]='Various',[title],[title] & ' by ' & [composer]) AS MyTitle, "
                     "CodeName  FROM tblMelodies ORDER BY Title"))
                .last(),
            QStringLiteral("The Storm by |Storm"));
}

TEST_F(CatalogueStatements, ATuneIsFoundByItsCodeNameInAnyCase) {
  EXPECT_EQ(database.Column(QStringLiteral("SELECT * FROM tblMelodies WHERE CodeName = 'mOON'")),
            QStringList(QStringLiteral("Moon")));
  EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM tblTracks WHERE CodeName = 'MOON' ORDER BY TrackNo")),
            QStringList(QStringLiteral("Moon|1|Piano|1|0|0|0|0")));
  EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM tblWords WHERE FileName = 'moon' ORDER BY Bar,Beat,Tick")),
            QStringList(QStringLiteral("Moon|1|1|0|la")));
  EXPECT_EQ(Rows(QStringLiteral("select * from tblWords Where Filename ='moon'")).size(), 1);
  EXPECT_EQ(Rows(QStringLiteral("SELECT * FROM tblThemes WHERE CodeName = 'moon' ORDER BY ThemeNo")),
            QStringList(QStringLiteral("Moon|1|1|2|Moonlight Sonata theme|0|30")));
  EXPECT_EQ(Rows(QStringLiteral("SELECT *  From tblThemes  WHERE tblThemes.CodeName='Fur'")).size(), 1);
}

TEST_F(CatalogueStatements, OtherTextsCompareExactlyAsStored) {
  EXPECT_EQ(
      database.Column(QStringLiteral("SELECT CodeName FROM tblMelodies WHERE Composer = 'Beethoven'")).size(),
      2);
  EXPECT_TRUE(database.Column(QStringLiteral("SELECT CodeName FROM tblMelodies WHERE Composer = 'beethoven'"))
                  .isEmpty());
}

TEST_F(CatalogueStatements, CountriesAreThoseOfComposersAndOfTunesOnce) {
  EXPECT_EQ(database.Column(
                QStringLiteral("Select distinct national from tblcomposer UNION select distinct country "
                               "from tblMelodies")),
            QStringList({QStringLiteral(" "), QStringLiteral("Germany"), QStringLiteral("Ireland"),
                         QStringLiteral("Italy")}));
}

TEST_F(CatalogueStatements, ThemesPerTuneAreCounted) {
  database.AddRow(QStringLiteral("tblThemes"),
                  {QStringLiteral("Moon"), 2, 3, 4, QStringLiteral("second"), 0, 9});
  const auto rows = Recordset::OpenStatement(
      database.Connect(),
      QStringLiteral("SELECT tblThemes.CodeName, Count(1) AS MyCount From tblThemes GROUP BY "
                     "tblThemes.CodeName  HAVING tblThemes.CodeName='Moon'"));
  EXPECT_EQ(rows->Number<std::uint8_t>(QStringLiteral("myCount")), 2);
  EXPECT_EQ(rows->Text(QStringLiteral("codename")), QStringLiteral("Moon"));
  rows->MoveNext();
  EXPECT_TRUE(rows->Eof());
}

QString HitStatement(int count, const QString& condition) {
  return QStringLiteral("SELECT TOP ") + QString::number(count) +
         QStringLiteral(
             " tblThemes.CodeName, tblThemes.ThemeNo, tblThemes.ThemeNotes, tblThemes.ThemeStartBar,  "
             "tblThemes.ThemeEndBar , tblThemes.ThemeTrackNo, tblThemes.Rank AS ThemeRank, "
             "tblMelodies.Title, "
             "tblMelodies.Tempo , tblMelodies.BeatsPerBar, tblMelodies.BeatLength, tblMelodies.LastAbsRef, "
             "tblMelodies.KeySignature , tblMelodies.KeyMode, tblMelodies.Composer, tblMelodies.Category, "
             "tblMelodies.SoloInstrument , tblMelodies.Ensemble, tblMelodies.Length, tblMelodies.Style, "
             "tblMelodies.Country , tblMelodies.MelodyTrack, tblMelodies.AccompPattern, "
             "tblMelodies.Description, "
             "tblMelodies.Rank FROM tblThemes INNER JOIN tblMelodies ON tblThemes.CodeName = "
             "tblMelodies.CodeName "
             "WHERE ") +
         condition + QStringLiteral(" ORDER BY tblThemes!rank");
}

TEST_F(CatalogueStatements, TopThemesComeFromTheJoinInOrderOfRank) {
  const auto rows = Recordset::OpenStatement(database.Connect(), HitStatement(2, QStringLiteral(" 1 = 1 ")));
  EXPECT_EQ(rows->Text(QStringLiteral("CodeName")), QStringLiteral("Fur"));
  EXPECT_EQ(rows->Number<int>(QStringLiteral("ThemeRank")), 10);
  EXPECT_EQ(rows->Number<int>(QStringLiteral("Rank")), 1);
  rows->MoveNext();
  EXPECT_EQ(rows->Text(QStringLiteral("Title")), QStringLiteral("The Storm"));
  rows->MoveNext();
  EXPECT_TRUE(rows->Eof());
  EXPECT_EQ(rows->FieldCount(), 25);
}

TEST_F(CatalogueStatements, TopThemesKeepThoseThatTieWithTheLast) {
  EXPECT_EQ(database.Column(HitStatement(3, QStringLiteral(" 1 = 1 "))).size(), 4);
  EXPECT_EQ(database.Column(HitStatement(1, QStringLiteral("category = 'Folk Song'"))),
            QStringList(QStringLiteral("Danny")));
}

TEST_F(CatalogueStatements, TopTunesKeepThoseThatTieWithTheLast) {
  const auto top = [](int count, const QString& tail) {
    return QStringLiteral(
               "SELECT TOP %1 codename,title,composer,category,style,soloinstrument,ensemble,rank ")
               .arg(count) +
           tail;
  };
  const auto ranked = [&](int count) {
    return database.Column(top(count, QStringLiteral(" From tblMelodies ORDER BY Rank")));
  };
  EXPECT_EQ(ranked(1), QStringList(QStringLiteral("Fur")));
  EXPECT_EQ(ranked(2), QStringList({QStringLiteral("Fur"), QStringLiteral("Storm")}));
  EXPECT_EQ(ranked(3).size(), 4);
  EXPECT_EQ(ranked(20).size(), 4);
  EXPECT_EQ(database.Column(
                top(1, QStringLiteral("FROM tblMelodies  WHERE category = 'Piano Solo' ORDER BY rank"))),
            QStringList(QStringLiteral("Fur")));
  EXPECT_EQ(
      database
          .Column(top(10, QStringLiteral(
                              "FROM tblMelodies  WHERE ensemble = 'Solo' AND (SoloInstrument = 'Violin' Or "
                              "SoloInstrument = 'Piano') ORDER BY rank")))
          .size(),
      4);
}

TEST_F(CatalogueStatements, CriteriaFindTunes) {
  const auto start = QStringLiteral(
      "SELECT codename,title,composer,category,style,soloinstrument,ensemble,rank FROM tblMelodies  WHERE  ");
  EXPECT_EQ(database.Column(
                start + QStringLiteral("1=1  AND Composer = 'Beethoven' AND KeySignature = 0 AND KeyMode = 0 "
                                       "AND BeatsPerBar = 4 AND BeatLength = 4 AND tempo >= 100 AND Tempo <= "
                                       "140 AND  ( 1 = 2  OR Length = 'Full' OR Length = 'Extract') ORDER BY "
                                       "title ")),
            QStringList({QStringLiteral("Fur"), QStringLiteral("Moon")}));
  EXPECT_EQ(database.Column(
                start + QStringLiteral("1=1  AND (Country = 'Italy' or Composer IN (SELECT Composer FROM "
                                       "tblComposer WHERE national = 'Italy'))  ORDER BY composer,title ")),
            QStringList(QStringLiteral("Storm")));
  EXPECT_TRUE(database
                  .Column(start + QStringLiteral(
                                      "1=1  AND  ( 1 = 2  OR ((Length)<>'Full' And (Length)<>'Extract' And "
                                      "(Length)<>'Theme'))"))
                  .isEmpty());
}

TEST_F(CatalogueStatements, TitlesAndDescriptionsAreSearchedWithEitherWildcard) {
  const auto start = QStringLiteral(
      "SELECT codename,title,composer,category,style,soloinstrument,ensemble,rank FROM tblMelodies WHERE ");
  for (const char16_t* wildcard : {u"%", u"*"}) {
    const QString sign = QString::fromUtf16(wildcard);
    EXPECT_EQ(database.Column(start + QStringLiteral("Title like '") + sign + QStringLiteral("light") + sign +
                              u'\''),
              QStringList(QStringLiteral("Moon")));
    EXPECT_EQ(database
                  .Column(start + QStringLiteral("description like '") + sign + QStringLiteral("About") +
                          sign + u'\'')
                  .size(),
              4);
  }
}

TEST_F(CatalogueStatements, ListsForTheCombosComeInOrder) {
  EXPECT_EQ(database.Column(QStringLiteral("Select composer from tblComposer ORDER BY composer")),
            QStringList({QStringLiteral("Beethoven"), QStringLiteral("Various"), QStringLiteral("Vivaldi")}));
  EXPECT_EQ(database.Column(
                QStringLiteral("select * from tblComposer WHERE composer <> 'Various' Order by COMPOSER")),
            QStringList({QStringLiteral("Beethoven"), QStringLiteral("Vivaldi")}));
  database.AddRow(QStringLiteral("tblInstruments"), {40, QStringLiteral("Violin"), QStringLiteral("Strings"),
                                                     true, 4, QStringLiteral("A7"), QStringLiteral("G3")});
  EXPECT_EQ(
      Rows(QStringLiteral("select instrumentNo,instrumentName from tblInstruments ORDER BY instrumentName")),
      QStringList(QStringLiteral("40|Violin")));
  EXPECT_EQ(database.Column(QStringLiteral("select * from tblInstruments WHERE InstrumentNo = 40")).size(),
            1);
  database.AddRow(QStringLiteral("tblFamily"), {QStringLiteral("Strings")});
  database.AddRow(QStringLiteral("tblFamily"), {QStringLiteral("All Instruments")});
  EXPECT_EQ(database.Column(QStringLiteral(
                "select Family from tblFamily where family <> 'All Instruments' ORDER BY Family")),
            QStringList(QStringLiteral("Strings")));
}

TEST_F(CatalogueStatements, BrowsersLeaveOutTestAndDemoTunes) {
  database.Execute(QStringLiteral("UPDATE tblMelodies SET Length = 'test' WHERE CodeName = 'Fur'"));
  EXPECT_EQ(Rows(QStringLiteral(
                "SELECT title, Category,SoloInstrument,Ensemble,Style,Length,Tempo,codename FROM "
                "tblmelodies WHERE composer = 'Beethoven' AND length <> 'test' ORDER BY category, title ")),
            QStringList(QStringLiteral("Moonlight Sonata|Piano Solo|Violin|Solo|Baroque|Full|120|Moon")));
  EXPECT_EQ(
      Rows(QStringLiteral(
               "SELECT title, Composer, Category,SoloInstrument,Ensemble,Style,Length,CodeName FROM "
               "tblmelodies WHERE (Country = 'Germany' or Composer IN (SELECT Composer FROM tblComposer "
               "WHERE national = 'Germany'))  ORDER BY category, title "))
          .size(),
      2);
}

TEST_F(CatalogueStatements, TimeLinesReadYears) {
  database.AddRow(QStringLiteral("tblWorldEvents"), {1789, QStringLiteral("A revolution")});
  database.AddRow(QStringLiteral("tblKingsEngland"),
                  {1727, QStringLiteral("George"), QStringLiteral("The second")});
  EXPECT_EQ(Rows(QStringLiteral(
                "SELECT FirstYear,MainText FROM tblWorldEvents where FirstYear >= 1700 and FirstYear <= "
                "1800 ORDER BY FirstYear")),
            QStringList(QStringLiteral("1789|A revolution")));
  EXPECT_EQ(
      database.Column(QStringLiteral("select Description from tblKingsEngland where maintext = 'George'")),
      QStringList(QStringLiteral("The second")));
  const auto rows = Recordset::OpenStatement(
      database.Connect(),
      QStringLiteral("select COMPOSER as mainText,BORN as FirstYear, DIED as SecondYear from "
                     "tblComposer where born >= 1700 and born <= 1800 Order by BORN"));
  EXPECT_EQ(rows->Text(QStringLiteral("MainText")), QStringLiteral("Beethoven"));
  EXPECT_EQ(rows->Number<int>(QStringLiteral("secondyear")), 1827);
}

TEST_F(CatalogueStatements, TheTreeOfThemesReadsItsLevels) {
  EXPECT_EQ(Rows(QStringLiteral(
                "select COMPOSER,FIRST_NAME from tblComposer WHERE style = 'Baroque' Order by COMPOSER")),
            QStringList(QStringLiteral("Vivaldi|Antonio")));
  EXPECT_EQ(Rows(QStringLiteral(
                "select CodeName,Title FROM tblMelodies WHERE Composer = 'Various' AND style = 'Baroque'")),
            QStringList(QStringLiteral("Danny|Danny Boy")));
  EXPECT_EQ(
      Rows(QStringLiteral(
               "select CodeName,Title, composer,length FROM tblMelodies WHERE Ensemble = 'Solo' ORDER BY "
               "Ensemble"))
          .size(),
      4);
}

TEST_F(CatalogueStatements, ADigestReadsTheEventTableInOrderOfTime) {
  const auto rows = Recordset::OpenStatement(database.Connect(),
                                             QStringLiteral("SELECT * FROM [Moon] ORDER BY bar,beat,tick "),
                                             CursorType::kKeyset, LockType::kOptimistic);
  EXPECT_EQ(rows->Text(QStringLiteral("Pitch")), QStringLiteral("C4"));
  rows->MoveNext();
  EXPECT_EQ(rows->Text(QStringLiteral("Pitch")), QStringLiteral("D4"));
}

TEST_F(CatalogueStatements, ATuneIsRemovedTableByTable) {
  const auto connection = database.Connect();
  connection->Execute(QStringLiteral("delete * from tblMelodies WHERE codename = 'moon'"));
  connection->Execute(QStringLiteral("delete * from tblWords WHERE filename = 'Moon'"));
  connection->Execute(QStringLiteral("DELETE * FROM tblTracks WHERE CodeName = 'Moon'"));
  connection->Execute(QStringLiteral("DELETE * FROM tblChords WHERE CodeName = 'Moon'"));
  connection->Execute(QStringLiteral("DROP TABLE [Moon]"));
  EXPECT_EQ(
      Rows(QStringLiteral(
               "select Title,Composer,Category,Ensemble,Style,SoloInstrument,Tempo,KeySignature,KeyMode,"
               "BeatsPerBar,BeatLength,Length,LastAbsRef,CodeName from tblMelodies Order by Title"))
          .size(),
      3);
  EXPECT_EQ(database.Column(QStringLiteral("SELECT distinct CodeName FROM tblTracks")).size(), 3);
  EXPECT_EQ(database.Column(QStringLiteral("SELECT distinct FileName FROM tblWords")).size(), 3);
  EXPECT_FALSE(connection->TableNames().contains(QStringLiteral("Moon")));
  EXPECT_EQ(database.Column(QStringLiteral("SELECT * FROM tblThemes WHERE CodeName = 'Moon'")).size(), 1);
}

TEST_F(CatalogueStatements, ATableIsDroppedWhileRowsOfAnotherAreRead) {
  const auto connection = database.Connect();
  const auto rows = Recordset::OpenStatement(
      connection, QStringLiteral("SELECT CodeName FROM tblMelodies WHERE Composer = 'Beethoven'"));
  int dropped = 0;
  for (; !rows->Eof(); rows->MoveNext(), ++dropped) {
    const QString name = rows->Text(0);
    connection->Execute(QStringLiteral("DROP TABLE ") + name);
    connection->Execute(QStringLiteral("DELETE * FROM tblTracks WHERE CodeName = '") + name + u'\'');
  }
  connection->Execute(QStringLiteral("DELETE * FROM tblMelodies WHERE Composer = 'Beethoven'"));
  EXPECT_EQ(dropped, 2);
  EXPECT_EQ(database.Column(QStringLiteral("SELECT CodeName FROM tblTracks")),
            QStringList({QStringLiteral("Danny"), QStringLiteral("Storm")}));
}

TEST_F(CatalogueStatements, ReferenceTablesAreEmptiedAndSeeded) {
  const auto connection = database.Connect();
  for (const char* statement :
       {"DELETE * FROM tblComposer",
        "INSERT INTO tblComposer VALUES ('Empty', 'No composers',0,0,'No country','No style')",
        "DELETE * FROM tblCategory", "INSERT INTO tblCategory VALUES ('Empty', 'No categories')",
        "DELETE * FROM tblStyles", "INSERT INTO tblStyles VALUES ('Empty',0,0, 'No styles')",
        "DELETE * FROM tblEnsemble", "INSERT INTO tblEnsemble VALUES ('Empty')", "DELETE * FROM tblCountry",
        "INSERT INTO tblCountry VALUES ('Empty','No countries',0,0)", "delete * from tblRecentFiles",
        "DELETE * FROM tblControlSettings"})
    connection->Execute(QString::fromLatin1(statement));
  EXPECT_EQ(Rows(QStringLiteral(
                "select COMPOSER,FIRST_NAME,NATIONAL,BORN,DIED,Style from tblComposer Order by COMPOSER")),
            QStringList(QStringLiteral("Empty|No composers|No country|0|0|No style")));
  EXPECT_EQ(Rows(QStringLiteral("select * FROM tblStyles")),
            QStringList(QStringLiteral("Empty|0|0|No styles")));
  EXPECT_EQ(Rows(QStringLiteral("select * FROM tblCountry")),
            QStringList(QStringLiteral("Empty|No countries|0|0")));
  EXPECT_EQ(Rows(QStringLiteral("select Category from tblCategory Order by Category")),
            QStringList(QStringLiteral("Empty")));
  EXPECT_EQ(Rows(QStringLiteral("select ensemble from tblEnsemble ORDER BY ensemble")),
            QStringList(QStringLiteral("Empty")));
}

struct ReportCase {
  const char* parent_table;
  const char* relation;
  const char* parent_column;
};

TEST_F(CatalogueStatements, ReportsGiveEachValueWithItsTunes) {
  database.AddRow(QStringLiteral("tblCategory"),
                  {QStringLiteral("Concerto"), QStringLiteral("for an orchestra")});
  database.AddRow(QStringLiteral("tblCategory"), {QStringLiteral("Piano Solo"), QStringLiteral("for one")});
  database.AddRow(QStringLiteral("tblCategory"), {QStringLiteral("Opera"), QStringLiteral("none here")});
  const auto report = Recordset::OpenStatement(
      database.Connect(),
      QStringLiteral(
          "SHAPE {SELECT * FROM `tblCategory`}  AS cmdComposer  APPEND ({select Composer,Title, Style, "
          "category, "
          "ensemble from tblmelodies order by title}  AS cmdMelodies RELATE 'CATEGORY' TO 'Category') AS "
          "cmdMelodies"));
  QStringList lines;
  for (; !report->Eof(); report->MoveNext()) {
    const auto tunes = report->Chapter(QStringLiteral("CMDMELODIES"));
    QString line = report->Text(QStringLiteral("category")) + u':';
    for (; !tunes->Eof(); tunes->MoveNext()) line += tunes->Text(QStringLiteral("Title")) + u';';
    lines.append(line);
  }
  EXPECT_EQ(lines, QStringList({QStringLiteral("Concerto:The Storm;"),
                                QStringLiteral("Piano Solo:Bagatelle;Moonlight "
                                               "Sonata;"),
                                QStringLiteral("Opera:")}));
}

TEST_F(CatalogueStatements, EveryReportFindsItsColumns) {
  database.AddRow(QStringLiteral("tblStyles"),
                  {QStringLiteral("Baroque"), 1600, 1750, QStringLiteral("old")});
  database.AddRow(QStringLiteral("tblEnsemble"), {QStringLiteral("Solo")});
  database.AddRow(QStringLiteral("tblInstruments"), {40, QStringLiteral("Violin"), QStringLiteral("Strings"),
                                                     true, 4, QStringLiteral("A7"), QStringLiteral("G3")});
  database.Execute(QStringLiteral("DELETE * FROM tblComposer WHERE COMPOSER <> 'Beethoven'"));
  const ReportCase cases[] = {{"tblComposer", "'COMPOSER' TO 'Composer'", "COMPOSER"},
                              {"tblStyles", "STYLE TO Style", "STYLE"},
                              {"tblEnsemble", "\"Ensemble\" TO \"ensemble\"", "Ensemble"},
                              {"tblInstruments", "'InstrumentName' TO 'SoloInstrument'", "InstrumentName"}};
  for (const ReportCase& report : cases) {
    const auto rows = Recordset::OpenStatement(
        database.Connect(),
        QStringLiteral("shape {SELECT * FROM `%1`}  AS cmdComposer  append ({select Composer,Title, "
                       "Style, category, ensemble, soloInstrument from tblmelodies order by title}  AS "
                       "cmdMelodies relate %2) AS cmdMelodies")
            .arg(QString::fromLatin1(report.parent_table), QString::fromLatin1(report.relation)));
    ASSERT_EQ(rows->RecordCount(), 1) << report.parent_table;
    EXPECT_FALSE(rows->Text(QString::fromLatin1(report.parent_column)).isEmpty());
    EXPECT_GE(rows->Chapter(QStringLiteral("cmdMelodies"))->RecordCount(), 2) << report.parent_table;
  }
}

}  // namespace
}  // namespace zelmar::testing_support
