// The order of the house: includes run downward, and no circle stands in them.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "tools/include_graph.h"

namespace zelmar {
namespace {

class MadeUpTree : public testing::Test {
 protected:
  void Write(const QString& path, const QByteArray& text) {
    QDir(folder_.path()).mkpath(QFileInfo(path).path());
    QFile file(folder_.filePath(path));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }
  IncludeGraph Graph() const { return IncludeGraph(QDir(folder_.path())); }

 private:
  QTemporaryDir folder_;
};

TEST_F(MadeUpTree, AnIncludeFromALowerFloorIsNamed) {
  Write("model/tune.cpp", "#include \"app/main.h\"\n#include \"platform/numbers.h\"\n");
  EXPECT_EQ(Graph().UpwardIncludes(), QStringList{"model/tune includes app/main"});
}

TEST_F(MadeUpTree, AWindowThatTheCoreIncludesIsNamed) {
  Write("midi/player.h", "#include \"midi/widgets/bar.h\"\n");
  Write("midi/widgets/bar.h", "#include \"platform/widgets/icons.h\"\n");
  EXPECT_EQ(Graph().WidgetsInTheCore(), QStringList{"midi/player includes midi/widgets/bar"});
  EXPECT_TRUE(Graph().UpwardIncludes().isEmpty());
}

TEST_F(MadeUpTree, ACircleIsNamedOnceWithAllThatStandInIt) {
  Write("shell/a.h", "#include \"shell/b.h\"\n");
  Write("shell/b.cpp", "  // no include\n#include \"shell/c.h\"\n");
  Write("shell/c.cpp", "#include \"shell/c.h\"\n#include \"shell/a.h\"\n");
  Write("shell/d.cpp", "#include \"shell/a.h\"\n");
  EXPECT_EQ(Graph().Circles(), QStringList{"shell/a, shell/b, shell/c"});
}

TEST_F(MadeUpTree, AFolderThatIsNoFloorIsNamed) {
  Write("attic/box.h", "");
  EXPECT_EQ(Graph().UnknownFloors(), QStringList{"attic/box"});
}

class SourceTree : public testing::Test {
 protected:
  const IncludeGraph graph_{QDir(QStringLiteral(ZELMAR_SOURCE_DIRECTORY "/src"))};
};

TEST_F(SourceTree, IsRead) {
  EXPECT_GT(graph_.UnitCount(), 150);
}

TEST_F(SourceTree, HasTheFloorsOfTheHouseAndNoOthers) {
  EXPECT_EQ(graph_.UnknownFloors(), QStringList());
}

TEST_F(SourceTree, IncludesRunDownward) {
  EXPECT_EQ(graph_.UpwardIncludes(), QStringList());
}

TEST_F(SourceTree, WhatNeedsNoWindowIncludesNone) {
  EXPECT_EQ(graph_.WidgetsInTheCore(), QStringList());
}

TEST_F(SourceTree, NoCircleStandsInTheIncludes) {
  EXPECT_EQ(graph_.Circles(), QStringList());
}

}  // namespace
}  // namespace zelmar
