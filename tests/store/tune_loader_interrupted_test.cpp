// Loaders that go, or start again, in the middle of a load.
#include "store/failing_load.h"

namespace zelmar::testing_support {
namespace {

class InterruptedLoad : public FailingLoad {
 protected:
  // Loads with a loader of its own that `interrupt` is given at each percentage; gives the percentages.
  template <typename Interrupt>
  std::vector<int> LoadWith(Interrupt interrupt) {
    leaving = std::make_unique<TuneLoader>();
    std::vector<int> raised;
    QObject::connect(leaving.get(), &TuneLoader::PercentCompleted, [&](std::int16_t percent) {
      raised.push_back(percent);
      interrupt(static_cast<int>(raised.size()));
    });
    QString name = QStringLiteral("Tune");
    leaving->DoLoad(name);
    return raised;
  }

  std::unique_ptr<TuneLoader> leaving;
};

// Message boxes during which something happens.
class ActingMessages : public ScriptedMessages {
 public:
  MessageAnswer Show(MessageIcon icon, const QString& text, const QString& title, MessageButtons buttons,
                     MessageAnswer default_button) override {
    act();
    return ScriptedMessages::Show(icon, text, title, buttons, default_button);
  }

  std::function<void()> act;
};

TEST_F(InterruptedLoad, ALoaderMayGoWheneverEventsAreServed) {
  LoadWith([](int) {});
  const int servings = platform.events->serve_count;
  ASSERT_GT(servings, 6);
  Global().RecentCodeNames = {};
  // The last serving is behind Done, when the tune is the window's already.
  for (int last = 1; last < servings; ++last) {
    window.SetMyTune(std::make_shared<Tune>());
    const int before = platform.events->serve_count;
    platform.events->on_serve = [&](int count) {
      if (count == before + last) leaving.reset();
    };
    LoadWith([](int) {});
    EXPECT_EQ(leaving, nullptr) << last;
    ExpectNothingLoaded();
  }
}

TEST_F(InterruptedLoad, ALoaderMayGoAtAnyPercentage) {
  const std::vector<int> all = LoadWith([](int) {});
  Global().RecentCodeNames = {};
  for (std::size_t last = 1; last <= all.size(); ++last) {
    window.SetMyTune(std::make_shared<Tune>());
    const auto raised = LoadWith([&](int count) {
      if (count == static_cast<int>(last)) leaving.reset();
    });
    EXPECT_EQ(leaving, nullptr);
    EXPECT_EQ(raised, std::vector<int>(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(last)));
    ExpectNothingLoaded();
  }
}

TEST_F(InterruptedLoad, ALoaderMayGoWhenItIsDone) {
  leaving = std::make_unique<TuneLoader>();
  QObject::connect(leaving.get(), &TuneLoader::Done, [&] { leaving.reset(); });
  QString name = QStringLiteral("Tune");
  leaving->DoLoad(name);
  EXPECT_EQ(leaving, nullptr);
  EXPECT_NE(window.MyTune(), nullptr);
  EXPECT_TRUE(QSqlDatabase::connectionNames().isEmpty());
}

TEST_F(InterruptedLoad, ALoaderMayGoBehindAWarning) {
  Change("UPDATE tblMelodies SET MIDIMode = 'GM3'");
  leaving = std::make_unique<TuneLoader>();
  const auto messages = std::make_shared<ActingMessages>();
  messages->act = [&] { leaving.reset(); };
  Platform().messages = messages;
  QString name = QStringLiteral("Tune");
  leaving->DoLoad(name);
  EXPECT_EQ(leaving, nullptr);
  ExpectNothingLoaded();
}

TEST_F(InterruptedLoad, ASecondLoadMayRunInTheMiddleOfTheFirst) {
  database.AddTune(QStringLiteral("Other"), {QStringLiteral("G4")});
  const std::size_t steps = LoadWith([](int) {}).size();
  for (std::size_t step = 1; step <= steps; ++step) {
    std::shared_ptr<Tune> inner;
    bool within = false;
    QStringList ended;
    int count = 0;
    leaving = std::make_unique<TuneLoader>();
    QObject::connect(leaving.get(), &TuneLoader::Done, [&](const QString& name) { ended.append(name); });
    QObject::connect(leaving.get(), &TuneLoader::PercentCompleted, [&] {
      if (within || ++count != static_cast<int>(step)) return;
      within = true;
      QString name = QStringLiteral("Other");
      leaving->DoLoad(name);
      inner = window.MyTune();
      within = false;
    });
    QString name = QStringLiteral("Tune");
    leaving->DoLoad(name);
    ASSERT_NE(inner, nullptr) << step;
    EXPECT_EQ(inner->FileName(), QStringLiteral("Other"));
    EXPECT_EQ(inner->Count(), 2);
    EXPECT_EQ(window.MyTune()->FileName(), QStringLiteral("Tune"));
    EXPECT_EQ(window.MyTune()->Count(), 6);
    EXPECT_TRUE(leaving->LoadedOk());
    EXPECT_EQ(ended, QStringList({QStringLiteral("Other"), QStringLiteral("Tune")}));
    EXPECT_TRUE(QSqlDatabase::connectionNames().isEmpty());
  }
}

}  // namespace
}  // namespace zelmar::testing_support
