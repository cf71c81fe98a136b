// Rows for a table out of columns that are told as data: what is shown, and in which order.
#include "shell/table_model.h"

#include <gtest/gtest.h>

#include <QPersistentModelIndex>
#include <QSignalSpy>

namespace zelmar {
namespace {

struct Piece {
  QString name;
  int bars;
};

std::vector<RowColumn<Piece>> Columns() {
  return {{QStringLiteral("Name"), [](const Piece& piece) { return piece.name; }},
          {QStringLiteral("Bars"), [](const Piece& piece) { return piece.bars; }, Qt::AlignRight, 5}};
}

class TableModelTest : public ::testing::Test {
 protected:
  static QStringList Names(const QAbstractItemModel& model) {
    QStringList names;
    for (int place = 0; place < model.rowCount(); ++place)
      names.append(model.index(place, 0).data().toString());
    return names;
  }
  void Fill(const QStringList& names) {
    std::vector<Piece> pieces;
    for (const QString& name : names) pieces.push_back({name, static_cast<int>(pieces.size()) + 1});
    model_.SetContent(std::move(pieces));
  }
  void FillBars(const std::vector<int>& bars) {
    std::vector<Piece> pieces;
    for (const int bar : bars) pieces.push_back({QString::number(bar), bar});
    model_.SetContent(std::move(pieces));
  }

  RowsModel<Piece> model_{Columns()};
};

TEST_F(TableModelTest, ShowsTheValuesUnderTheirHeadings) {
  model_.SetContent({{QStringLiteral("Minuet"), 32}, {QStringLiteral("Gavotte"), 8}});
  ASSERT_EQ(model_.rowCount(), 2);
  ASSERT_EQ(model_.columnCount(), 2);
  EXPECT_EQ(model_.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Bars"));
  EXPECT_EQ(model_.index(1, 0).data().toString(), QStringLiteral("Gavotte"));
  EXPECT_EQ(model_.index(0, 1).data().toString(), QStringLiteral("32"));
  const auto alignment = [this](int column) {
    return model_.index(0, column).data(Qt::TextAlignmentRole).toInt();
  };
  EXPECT_EQ(alignment(0), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter));
  EXPECT_EQ(alignment(1), static_cast<int>(Qt::AlignRight | Qt::AlignVCenter));
  EXPECT_EQ(model_.headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).toInt(), alignment(1));
}

TEST_F(TableModelTest, CellsCanBeChangedWhereItIsToldAlone) {
  Fill({QStringLiteral("a")});
  EXPECT_FALSE(model_.index(0, 1).flags() & Qt::ItemIsEditable);
  model_.SetEditable(1);
  EXPECT_TRUE(model_.index(0, 1).flags() & Qt::ItemIsEditable);
  EXPECT_FALSE(model_.index(0, 0).flags() & Qt::ItemIsEditable);
}

// --- Sorting ---

TEST_F(TableModelTest, NumbersSortByValueAndNotByTheirDigits) {
  FillBars({10, 9, -3, 100});
  model_.sort(1);
  EXPECT_EQ(Names(model_).join(QLatin1Char(' ')), QStringLiteral("-3 9 10 100"));
  model_.sort(1, Qt::DescendingOrder);
  EXPECT_EQ(Names(model_).join(QLatin1Char(' ')), QStringLiteral("100 10 9 -3"));
}

TEST_F(TableModelTest, TextsSortAsPeopleLookThemUp) {
  Fill({QStringLiteral("Etude 10"), QStringLiteral("zither"), QStringLiteral("\u00C9tude 9"),
        QStringLiteral("aria"), QStringLiteral("Bolero"), QStringLiteral("etude 2")});
  model_.sort(0);
  EXPECT_EQ(Names(model_), (QStringList{QStringLiteral("aria"), QStringLiteral("Bolero"),
                                        QStringLiteral("etude 2"), QStringLiteral("\u00C9tude 9"),
                                        QStringLiteral("Etude 10"), QStringLiteral("zither")}));
}

TEST_F(TableModelTest, WhatIsEmptyComesLastInEitherOrder) {
  Fill({QString(), QStringLiteral("b"), QString(), QStringLiteral("a")});
  for (const auto order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
    model_.sort(0, order);
    EXPECT_TRUE(Names(model_)[2].isEmpty());
    EXPECT_TRUE(Names(model_)[3].isEmpty());
  }
}

TEST_F(TableModelTest, RowsThatTieKeepTheirOrderBothWays) {
  model_.SetContent(
      {{QStringLiteral("first"), 2}, {QStringLiteral("second"), 2}, {QStringLiteral("low"), 1}});
  model_.sort(1);
  EXPECT_EQ(Names(model_),
            (QStringList{QStringLiteral("low"), QStringLiteral("first"), QStringLiteral("second")}));
  model_.sort(1, Qt::DescendingOrder);
  EXPECT_EQ(Names(model_),
            (QStringList{QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("low")}));
}

TEST_F(TableModelTest, ColumnMinusOnePutsTheRowsBack) {
  FillBars({3, 1, 2});
  model_.sort(1);
  model_.sort(-1);
  EXPECT_EQ(Names(model_).join(QLatin1Char(' ')), QStringLiteral("3 1 2"));
}

TEST_F(TableModelTest, ARowKeepsItsNumberWhereverItStands) {
  FillBars({30, 10, 20});
  const QPersistentModelIndex thirty(model_.index(0, 0));
  model_.sort(1);
  EXPECT_EQ(thirty.row(), 2);
  EXPECT_EQ(thirty.data().toString(), QStringLiteral("30"));
  EXPECT_EQ(model_.RowAt(2), 0);
  EXPECT_EQ(model_.PlaceOf(0), 2);
  EXPECT_EQ(model_.PlaceOf(1), 0);
  EXPECT_EQ(model_.RowAt(3), -1);
  EXPECT_EQ(model_.RowAt(-1), -1);
  EXPECT_EQ(model_.PlaceOf(3), -1);
}

TEST_F(TableModelTest, NewContentIsSortedAsTheOldWas) {
  FillBars({3, 1});
  model_.sort(1);
  FillBars({9, 7, 8});
  EXPECT_EQ(Names(model_).join(QLatin1Char(' ')), QStringLiteral("7 8 9"));
}

// --- Rows that come and go ---

class LiveRows : public ::testing::Test {
 protected:
  LiveRows()
      : model_(
            {{QStringLiteral("Bars"), [this](int row) { return bars_.at(static_cast<std::size_t>(row)); }}}) {
    model_.SetRows([this] { return static_cast<int>(bars_.size()); });
  }
  QString Shown() const {
    QStringList texts;
    for (int place = 0; place < model_.rowCount(); ++place)
      texts.append(model_.index(place, 0).data().toString());
    return texts.join(QLatin1Char(' '));
  }

  std::vector<int> bars_ = {5, 6, 7};
  TableModel model_;
};

TEST_F(LiveRows, AreReadWhenTheyAreShown) {
  model_.Reset();
  bars_[1] = 60;
  EXPECT_EQ(Shown(), QStringLiteral("5 60 7"));
}

TEST_F(LiveRows, ThatAreGoneBeforeTheTableKnowsAreBlank) {
  model_.Reset();
  bars_.clear();
  EXPECT_EQ(Shown(), QStringLiteral("  "));
}

TEST_F(LiveRows, AreFewerOrMoreAfterARefreshWithoutAReset) {
  model_.Reset();
  QSignalSpy resets(&model_, &QAbstractItemModel::modelReset);
  QSignalSpy changes(&model_, &QAbstractItemModel::dataChanged);
  const QPersistentModelIndex first(model_.index(0, 0)), last(model_.index(2, 0));
  bars_ = {50, 60};
  model_.Refresh();
  EXPECT_EQ(Shown(), QStringLiteral("50 60"));
  EXPECT_TRUE(first.isValid());
  EXPECT_FALSE(last.isValid());
  bars_ = {1, 2, 3, 4};
  model_.Refresh();
  EXPECT_EQ(Shown(), QStringLiteral("1 2 3 4"));
  EXPECT_EQ(changes.count(), 2);
  bars_.clear();
  model_.Refresh();
  EXPECT_EQ(model_.rowCount(), 0);
  EXPECT_EQ(resets.count(), 0);
}

TEST_F(LiveRows, AreSortedAnewByARefresh) {
  model_.Reset();
  model_.sort(0, Qt::DescendingOrder);
  bars_ = {5, 60, 7, 6};
  model_.Refresh();
  EXPECT_EQ(Shown(), QStringLiteral("60 7 6 5"));
  bars_ = {1, 2};
  model_.Refresh();
  EXPECT_EQ(Shown(), QStringLiteral("2 1"));
}

TEST_F(LiveRows, ThatAreRemovedLeaveTheOthersTheirPlaces) {
  for (const bool sorted : {false, true}) {
    bars_ = {5, 8, 7, 6};
    model_.sort(-1);
    model_.Reset();
    if (sorted) model_.sort(0);
    const QPersistentModelIndex five(model_.index(model_.PlaceOf(0), 0)),
        six(model_.index(model_.PlaceOf(3), 0));
    bars_.erase(bars_.begin() + 1, bars_.begin() + 3);
    model_.RowsRemoved(1, 2);
    EXPECT_EQ(Shown(), QStringLiteral("5 6"));
    EXPECT_EQ(five.data().toString(), QStringLiteral("5"));
    EXPECT_EQ(six.data().toString(), QStringLiteral("6"));
    EXPECT_EQ(model_.RowAt(six.row()), 1);
    model_.RowsRemoved(7, 1);
    model_.RowsRemoved(-1, 1);
    EXPECT_EQ(model_.rowCount(), 2);
  }
}

TEST_F(LiveRows, OfWhichOneChangesIsToldOfThatOneAlone) {
  model_.Reset();
  model_.sort(0, Qt::DescendingOrder);
  QSignalSpy changes(&model_, &QAbstractItemModel::dataChanged);
  model_.RowChanged(0);
  model_.RowChanged(3);
  ASSERT_EQ(changes.count(), 1);
  EXPECT_EQ(changes[0][0].toModelIndex().row(), 2);
  EXPECT_EQ(changes[0][1].toModelIndex().row(), 2);
}

}  // namespace
}  // namespace zelmar
