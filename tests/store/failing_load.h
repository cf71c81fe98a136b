// A loader and a tune whose load is made to fail, and what must hold afterwards.
#pragma once

#include "store/loading_fixture.h"

namespace zelmar::testing_support {

class FailingLoad : public LoadingTest {
 protected:
  FailingLoad() {
    database.AddTune(QStringLiteral("Tune"),
                     {QStringLiteral("C4"), QStringLiteral("D4"), QStringLiteral("E4")});
    window.SetMyTune(std::make_shared<Tune>());
  }

  // After any failure: no tune, the flag as it was, nothing open, the file as it was.
  void ExpectNothingLoaded() {
    EXPECT_FALSE(loader.LoadedOk());
    EXPECT_EQ(window.MyTune(), nullptr);
    EXPECT_TRUE(done.isEmpty());
    EXPECT_TRUE(Global().RecentCodeNames[0].isEmpty());
    EXPECT_TRUE(QSqlDatabase::connectionNames().isEmpty());
  }

  void ExpectQuietFailure() {
    const QByteArray before = BytesOf(database.Path());
    Load(QStringLiteral("Tune"));
    ExpectNothingLoaded();
    EXPECT_EQ(BytesOf(database.Path()), before);
  }

  // Loads, expecting a failure that leaves DoLoad, and gives its description.
  QString ExpectFailure(int number) {
    const QByteArray before = BytesOf(database.Path());
    QString description;
    try {
      Load(QStringLiteral("Tune"));
      ADD_FAILURE() << "the load went well";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Number(), number);
      description = failure.Description();
    }
    ExpectNothingLoaded();
    EXPECT_EQ(BytesOf(database.Path()), before);
    return description;
  }

  void Change(const char* statement) const { database.Execute(QString::fromLatin1(statement)); }
};

}  // namespace zelmar::testing_support
