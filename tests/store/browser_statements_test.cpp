// The lists of tunes in the catalogue browsers, word for word: tests and demonstrations are left out by their
// length, however it is spelled.
#include "store/store_fixture.h"

namespace zelmar::testing_support {
namespace {

struct Browser {
  const char* name;
  const char* start;
  const char* value;
  const char* tail;
  bool shows_demonstrations;
};

constexpr Browser kBrowsers[] = {
    {"categories",
     "SELECT title, Composer,SoloInstrument,Ensemble,Style,Length,Tempo,codename FROM tblmelodies WHERE "
     "category = '",
     "Concerto", "' AND length <> 'test' AND length <> 'demo' ORDER BY Composer,Title", false},
    {"composers",
     "SELECT title, Category,SoloInstrument,Ensemble,Style,Length,Tempo,codename FROM tblmelodies WHERE "
     "composer = '",
     "Bach", "' AND length <> 'test' ORDER BY category, title ", true},
    {"ensembles",
     "SELECT title, Composer,category,SoloInstrument,Style,Length,Tempo,codename FROM tblmelodies WHERE "
     "ensemble = '",
     "Solo", "' AND length <> 'test' AND length <> 'demo'", false},
    {"styles",
     "SELECT title, Composer,category,SoloInstrument,Ensemble,Length,Tempo,codename FROM tblmelodies WHERE "
     "style = '",
     "Baroque", "' AND length <> 'demo' AND length <> 'test' ORDER BY composer,title", false},
    {"instruments",
     "SELECT title, Composer,category,Ensemble,Style,Length,Tempo,codename FROM tblMelodies WHERE "
     "SoloInstrument = '",
     "Violin", "' AND length <> 'test'", true},
};

class BrowserStatements : public StoreTest {
 protected:
  // One tune of each length, titled and named by it.
  BrowserStatements() {
    for (const char* length :
         {"Full", "Extract", "Theme", "Test", "test", "TEST", "demo", "DEMO", "Demo", "Test!"}) {
      SampleTune tune;
      tune.code_name = QStringLiteral("Tune%1").arg(++count_);
      tune.title = QLatin1String(length);
      tune.length = QLatin1String(length);
      tune.events = SampleMelody({QStringLiteral("C4")});
      database.AddTune(tune);
    }
  }

  QStringList Titles(const Browser& browser) const {
    QStringList titles = database.Column(QLatin1String(browser.start) + QLatin1String(browser.value) +
                                         QLatin1String(browser.tail));
    titles.sort();
    return titles;
  }

 private:
  int count_ = 0;
};

TEST_F(BrowserStatements, LeaveOutTestsAndDemonstrationsInAnyCase) {
  for (const Browser& browser : kBrowsers) {
    QStringList expected = {QStringLiteral("Extract"), QStringLiteral("Full"), QStringLiteral("Test!"),
                            QStringLiteral("Theme")};
    if (browser.shows_demonstrations)
      expected += {QStringLiteral("DEMO"), QStringLiteral("Demo"), QStringLiteral("demo")};
    expected.sort();
    EXPECT_EQ(Titles(browser), expected) << browser.name;
  }
}

TEST_F(BrowserStatements, ATuneWithoutALengthIsInNone) {
  database.Execute(QStringLiteral("UPDATE tblMelodies SET Length = NULL WHERE Title = 'Full'"));
  for (const Browser& browser : kBrowsers)
    EXPECT_FALSE(Titles(browser).contains(QStringLiteral("Full"))) << browser.name;
}

// The criteria of the search ask for the same words the other way round.
TEST_F(BrowserStatements, CriteriaFindALengthInAnyCase) {
  const auto start = QStringLiteral("SELECT title FROM tblMelodies  WHERE  1=1  AND  ( 1 = 2 ");
  EXPECT_EQ(database.Column(start + QStringLiteral(" OR Length = 'full')")),
            QStringList(QStringLiteral("Full")));
  EXPECT_EQ(database
                .Column(start + QStringLiteral(
                                    " OR ((Length)<>'FULL' And (Length)<>'Extract' And (Length)<>'Theme'))"))
                .size(),
            7);
}

TEST_F(BrowserStatements, TheWordItselfStaysAsItIsStored) {
  EXPECT_EQ(database.Column(QStringLiteral("SELECT Length FROM tblMelodies WHERE CodeName = 'Tune4'")),
            QStringList(QStringLiteral("Test")));
}

}  // namespace
}  // namespace zelmar::testing_support
