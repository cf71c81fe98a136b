// A recordset that is changed at random, against a plain list that is changed in the same way.
#include <algorithm>
#include <map>

#include "store/store_fixture.h"
#include "support/dice.h"

namespace zelmar::testing_support {
namespace {

class ChangedRows : public StoreTest {
 protected:
  ChangedRows() : connection(database.Connect()) {
    connection->Execute(QStringLiteral("CREATE TABLE numbered (No INTEGER PRIMARY KEY, Name TEXT)"));
    connection->Execute(QStringLiteral("CREATE TABLE plain (Name TEXT, Size INTEGER)"));
  }
  void FillNumbered(int count) {
    for (int i = 1; i <= count; ++i)
      connection->Execute(QStringLiteral("INSERT INTO numbered VALUES (%1,'n%1')").arg(i * 10));
  }
  QStringList Stored() const { return Rows(QStringLiteral("select No, Name from numbered order by No")); }

  std::shared_ptr<Connection> connection;
};

TEST_F(ChangedRows, FollowANumberKeyThatWasChanged) {
  FillNumbered(3);
  const auto rows = Recordset::OpenTable(connection, QStringLiteral("numbered"));
  rows->MoveNext();
  rows->SetValue(QStringLiteral("No"), 77);
  rows->UpdateBatch();
  rows->SetValue(QStringLiteral("Name"), QStringLiteral("moved"));
  rows->UpdateBatch();
  EXPECT_EQ(Stored(), QStringList({"10|n10", "30|n30", "77|moved"}));
  rows->SetValue(QStringLiteral("No"), 5);
  rows->SetValue(QStringLiteral("Name"), QStringLiteral("again"));
  rows->UpdateBatch();
  EXPECT_EQ(Stored(), QStringList({"5|again", "10|n10", "30|n30"}));
  rows->Delete();
  rows->UpdateBatch();
  EXPECT_EQ(Stored(), QStringList({"10|n10", "30|n30"}));
}

TEST_F(ChangedRows, FollowANumberKeyThatWasChangedTwiceBeforeItsCommit) {
  FillNumbered(2);
  const auto rows = Recordset::OpenTable(connection, QStringLiteral("numbered"));
  rows->SetValue(QStringLiteral("No"), 50);
  rows->SetValue(QStringLiteral("No"), 60);
  rows->UpdateBatch();
  rows->SetValue(QStringLiteral("Name"), QStringLiteral("x"));
  rows->UpdateBatch();
  EXPECT_EQ(Stored(), QStringList({"20|n20", "60|x"}));
}

TEST_F(ChangedRows, FollowTheKeyOfARowThatWasAdded) {
  FillNumbered(1);
  const auto rows = Recordset::OpenTable(connection, QStringLiteral("numbered"));
  rows->AddNew();
  rows->SetValue(QStringLiteral("No"), 4);
  rows->UpdateBatch();
  rows->SetValue(QStringLiteral("No"), 6);
  rows->UpdateBatch();
  rows->SetValue(QStringLiteral("Name"), QStringLiteral("six"));
  rows->UpdateBatch();
  EXPECT_EQ(Stored(), QStringList({"6|six", "10|n10"}));
}

TEST_F(ChangedRows, StayAllAsTheyWereWhenOneKeyIsTaken) {
  FillNumbered(4);
  const auto before = Stored();
  {
    const auto rows = Recordset::OpenTable(connection, QStringLiteral("numbered"));
    rows->SetValue(QStringLiteral("Name"), QStringLiteral("first"));
    rows->MoveNext();
    rows->SetValue(QStringLiteral("No"), 40);
    EXPECT_EQ(FailureNumber([&] { rows->UpdateBatch(); }), database_error::kDuplicateValue);
  }
  EXPECT_EQ(Stored(), before);
}

TEST_F(ChangedRows, CanBePutRightAfterAKeyWasTaken) {
  FillNumbered(3);
  const auto rows = Recordset::OpenTable(connection, QStringLiteral("numbered"));
  rows->SetValue(QStringLiteral("No"), 30);
  EXPECT_EQ(FailureNumber([&] { rows->UpdateBatch(); }), database_error::kDuplicateValue);
  rows->SetValue(QStringLiteral("No"), 31);
  rows->UpdateBatch();
  rows->SetValue(QStringLiteral("Name"), QStringLiteral("right"));
  rows->UpdateBatch();
  EXPECT_EQ(Stored(), QStringList({"20|n20", "30|n30", "31|right"}));
}

TEST_F(ChangedRows, OfANumberKeyAreThoseOfAListChangedInTheSameWay) {
  for (unsigned seed = 1; seed <= 10; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    connection->Execute(QStringLiteral("delete * from numbered"));
    FillNumbered(8);
    std::map<int, QString> list;
    for (int i = 1; i <= 8; ++i) list[i * 10] = QStringLiteral("n%1").arg(i * 10);
    const auto rows = Recordset::OpenTable(connection, QStringLiteral("numbered"));
    std::vector<int> keys;  // of the recordset's rows in their order
    for (const auto& [key, name] : list) keys.push_back(key);
    for (int step = 0; step < 40 && !keys.empty(); ++step) {
      const int place = dice(static_cast<int>(keys.size()));
      rows->MoveFirst();
      for (int i = 0; i < place; ++i) rows->MoveNext();
      int& key = keys[static_cast<std::size_t>(place)];
      ASSERT_EQ(rows->Number<int>(QStringLiteral("No")), key);
      switch (dice(4)) {
        case 0: {
          int fresh = dice(500);
          while (list.count(fresh) > 0) ++fresh;
          rows->SetValue(QStringLiteral("No"), fresh);
          auto node = list.extract(key);
          node.key() = fresh;
          list.insert(std::move(node));
          key = fresh;
          break;
        }
        case 1:
          rows->SetValue(QStringLiteral("Name"), QStringLiteral("s%1").arg(step));
          list[key] = QStringLiteral("s%1").arg(step);
          break;
        case 2: {
          int fresh = dice(500);
          while (list.count(fresh) > 0) ++fresh;
          rows->AddNew();
          rows->SetValue(QStringLiteral("No"), fresh);
          rows->SetValue(QStringLiteral("Name"), QStringLiteral("a%1").arg(step));
          list[fresh] = QStringLiteral("a%1").arg(step);
          keys.push_back(fresh);
          break;
        }
        default:
          rows->Delete();
          list.erase(key);
          keys.erase(keys.begin() + place);
      }
      rows->UpdateBatch();
      EXPECT_EQ(rows->RecordCount(), static_cast<qsizetype>(keys.size()));
    }
    QStringList wanted;
    for (const auto& [key, name] : list) wanted.append(QStringLiteral("%1|%2").arg(key).arg(name));
    EXPECT_EQ(Stored(), wanted);
  }
}

TEST_F(ChangedRows, WithoutAKeyAreThoseOfAListChangedInBatches) {
  for (unsigned seed = 1; seed <= 10; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed + 30);
    connection->Execute(QStringLiteral("delete * from plain"));
    std::vector<std::pair<QString, int>> list;
    for (int i = 0; i < 6; ++i) {
      connection->Execute(QStringLiteral("INSERT INTO plain VALUES ('same',%1)").arg(i));
      list.emplace_back(QStringLiteral("same"), i);
    }
    const auto rows = Recordset::OpenTable(connection, QStringLiteral("plain"));
    for (int step = 0; step < 60; ++step) {
      const int place = list.empty() ? -1 : dice(static_cast<int>(list.size()));
      if (place >= 0) {
        rows->MoveFirst();
        for (int i = 0; i < place; ++i) rows->MoveNext();
        ASSERT_EQ(rows->Text(QStringLiteral("NAME")), list[static_cast<std::size_t>(place)].first);
        ASSERT_EQ(rows->Number<int>(QStringLiteral("SIZE")), list[static_cast<std::size_t>(place)].second);
      }
      const int act = dice(5);
      if (act == 0 || place < 0) {
        rows->AddNew();
        rows->SetValue(QStringLiteral("name"), QStringLiteral("new'%1").arg(step));
        rows->SetValue(QStringLiteral("size"), step);
        list.emplace_back(QStringLiteral("new'%1").arg(step), step);
      } else if (act == 1) {
        rows->Delete();
        list.erase(list.begin() + place);
      } else if (act == 2) {
        rows->UpdateBatch();
      } else {
        rows->SetValue(QStringLiteral("size"), -step);
        list[static_cast<std::size_t>(place)].second = -step;
      }
    }
    rows->UpdateBatch();
    QStringList wanted;
    for (const auto& [name, size] : list) wanted.append(QStringLiteral("%1|%2").arg(name).arg(size));
    QStringList stored = Rows(QStringLiteral("select Name, Size from plain"));
    EXPECT_EQ(stored, wanted);
  }
}

TEST_F(ChangedRows, AreFoundForwardFromTheRowThatStands) {
  Dice dice(9);
  std::vector<int> sizes;
  for (int i = 0; i < 40; ++i) {
    sizes.push_back(dice(5));
    connection->Execute(QStringLiteral("INSERT INTO plain VALUES ('w%1',%1)").arg(sizes.back()));
  }
  for (const CursorType cursor : {CursorType::kStatic, CursorType::kKeyset, CursorType::kForwardOnly}) {
    for (int from = 0; from < 40; from += 7)
      for (int wanted = 0; wanted < 6; ++wanted) {
        const auto rows =
            Recordset::OpenTable(connection, QStringLiteral("plain"), cursor, LockType::kReadOnly);
        for (int i = 0; i < from; ++i) rows->MoveNext();
        rows->Find(wanted % 2 ? QStringLiteral("Name = 'w%1'").arg(wanted)
                              : QStringLiteral("Size = %1").arg(wanted));
        const auto found = std::find(sizes.begin() + from, sizes.end(), wanted);
        EXPECT_EQ(rows->Eof(), found == sizes.end());
        if (found != sizes.end()) {
          EXPECT_EQ(rows->AbsolutePosition(), found - sizes.begin() + 1);
        }
      }
  }
}

}  // namespace
}  // namespace zelmar::testing_support
