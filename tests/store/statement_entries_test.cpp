// The values of a statement, as a combo box offers them.
#include "store/statement_entries.h"

#include "store/store_fixture.h"

namespace zelmar::testing_support {
namespace {

class StatementEntriesTest : public StoreTest {
 protected:
  void AddComposer(const QVariant& name, const QVariant& country) const {
    database.AddRow(QStringLiteral("tblComposer"), {name, QVariant(), 1700, 1750, country, QVariant()});
  }
  QStringList Texts(const QString& statement, const QString& column) const {
    QStringList texts;
    for (const ComboEntry& entry : StatementEntries(database.Connect(), statement, column))
      texts.append(entry.text);
    return texts;
  }
};

TEST_F(StatementEntriesTest, AreTheTextsOfTheColumnInTheStatementsOrder) {
  AddComposer(QStringLiteral("Vivaldi"), QStringLiteral("Italy"));
  AddComposer(QStringLiteral("Bach"), QStringLiteral("Germany"));
  EXPECT_EQ(
      Texts(QStringLiteral("select composer from tblComposer ORDER BY composer"), QStringLiteral("Composer")),
      (QStringList{QStringLiteral("Bach"), QStringLiteral("Vivaldi")}));
}

TEST_F(StatementEntriesTest, PassOverWhatIsMissingOrBlank) {
  AddComposer(QStringLiteral("A"), QVariant());
  AddComposer(QStringLiteral("B"), QStringLiteral("  "));
  AddComposer(QStringLiteral("C"), QStringLiteral("Italy"));
  SampleTune tune;
  tune.code_name = QStringLiteral("Moon");
  tune.country = QStringLiteral("Austria");
  database.AddTune(tune);
  EXPECT_EQ(
      Texts(QStringLiteral(
                "Select distinct national from tblcomposer UNION select distinct country from tblMelodies"),
            QStringLiteral("National")),
      (QStringList{QStringLiteral("Austria"), QStringLiteral("Italy")}));
}

TEST_F(StatementEntriesTest, BearTheNumberOfAnotherColumn) {
  const auto add = [this](int number, const char16_t* name) {
    database.AddRow(QStringLiteral("tblInstruments"),
                    {number, QString::fromUtf16(name), QVariant(), false, 4, QVariant(), QVariant()});
  };
  add(40, u"Violin");
  add(0, u"Piano");
  const auto entries = StatementEntries(
      database.Connect(),
      QStringLiteral("select instrumentNo,instrumentName from tblInstruments ORDER BY instrumentName"),
      QStringLiteral("instrumentName"), QStringLiteral("instrumentNo"));
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[0], (ComboEntry{QStringLiteral("Piano"), 0}));
  EXPECT_EQ(entries[1], (ComboEntry{QStringLiteral("Violin"), 40}));
}

TEST_F(StatementEntriesTest, OfAColumnThatIsNotThereAreAFailure) {
  AddComposer(QStringLiteral("Bach"), QStringLiteral("Germany"));
  EXPECT_EQ(FailureNumber([this] {
              Texts(QStringLiteral("select composer from tblComposer"), QStringLiteral("Style"));
            }),
            database_error::kItemNotFound);
}

}  // namespace
}  // namespace zelmar::testing_support
