// A walk through the records of a table, one at a time: moving, finding, changing, adding and deleting.
//
//   RecordCursor cursor({"select * from tblComposer", "composer <> 'Various'", "Order by COMPOSER",
//   "COMPOSER"},
//                       "Composer No. ");
//   cursor.BeforeLeaving([page] { return page->EndEditing(); });
//   AskBeforeClosing(window, [&cursor] { return cursor.Leave(); });
//   connect(&cursor, &RecordCursor::AnotherRecord, page, [&] { page->ShowPageOf(cursor.Key().toString()); });
//   cursor.OpenAll(connection);
//
// It opens locked, and changes nothing until it is unlocked. Each change is made on rows that are read anew
// and that take the place of the old ones once it is committed: after a failure all is as it was, and what
// others changed meanwhile is seen. A record that another took out is gone from the walk as soon as that
// shows.
//
// Before the walk leaves a record (a move, a lock, an adding, Leave for a window that closes) it asks
// everyone who keeps something of the record; one who holds it back keeps it there. Hooks and slots may serve
// events and may end the cursor itself.
#pragma once

#include <QObject>
#include <QPair>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <memory>
#include <vector>

#include "store/record_source.h"

namespace zelmar {

class Connection;
class Recordset;

class RecordCursor : public QObject {
  Q_OBJECT

 public:
  // `position_prefix` begins the text of the position: "Composer No. ".
  RecordCursor(RecordSource source, QString position_prefix, QObject* parent = nullptr);
  ~RecordCursor() override;

  // Each opens the records, stands on the first and gives Moved and AnotherRecord. They throw DatabaseError.
  void OpenAll(std::shared_ptr<Connection> connection);
  void OpenOne(std::shared_ptr<Connection> connection, const QVariant& key_value);
  // Reads the records anew and stands on the same one, or where it stood.
  void Refresh();

  // --- Where it stands ---

  bool HasRecord() const;
  qsizetype Position() const;  // from 1; 0 without a record
  qsizetype Count() const;
  // "Composer No. 3 of 80".
  QString PositionText() const;
  const RecordSource& Source() const { return source_; }
  QVariant Key() const;
  // The keys of all records as texts, in their order.
  QStringList Keys() const;
  // Of the current record; a null without one. Throws DatabaseError for a column that the records do not
  // have.
  QVariant Value(const QString& column) const;
  QString Text(const QString& column) const { return Value(column).toString(); }
  bool YesNo(const QString& column) const;

  // --- Moving ---

  // Without a record, and when someone holds the record, nothing happens. A move past an end stays on the
  // record there and calls the hook.
  void MoveFirst();
  void MovePrevious();
  void MoveNext();
  void MoveLast();
  // Called when a move goes past the last record, or before the first one.
  void OnPastEnd(std::function<void()> hook) { past_end_ = std::move(hook); }
  void OnBeforeStart(std::function<void()> hook) { before_start_ = std::move(hook); }
  // Goes to the record whose key is this value, exactly as stored. False, and no move, when there is none.
  bool Find(const QVariant& key_value);

  // --- Leaving a record ---

  // `may_leave` is asked before the record is left: it puts away what it keeps, or holds the record by false.
  void BeforeLeaving(std::function<bool()> may_leave) { guards_.push_back(std::move(may_leave)); }
  // Asks all of them; false when one holds the record or they are being asked already.
  bool Leave();

  // --- Changing ---

  bool Locked() const { return locked_; }
  // Locking leaves the record; held, it stays unlocked and gives false.
  bool Lock();
  void Unlock();

  // All of these throw DatabaseError (kReadOnly) while locked, (kNoCurrentRecord) without a record or when
  // another took it out, (kDuplicateValue) for a key that is taken, and what the engine says of a file that
  // it cannot write.
  void Store(const QString& column, const QVariant& value);
  using Values = std::vector<std::pair<QString, QVariant>>;
  // Adds a record, the key among its values, and goes to it; a walk through one record becomes one through
  // all. False when someone holds the current record.
  bool Add(const Values& values);
  // Takes the record out and goes to the next one, or to the last.
  void Delete();

 Q_SIGNALS:
  // After each move and each change: what shows the record shows it again.
  void Moved();
  // After a move to a record with another key than the one before.
  void AnotherRecord();
  // A record came, went or got another key.
  void KeysChanged();
  void Renamed(const QVariant& from, const QVariant& to);
  void LockChanged();

 private:
  enum class Step { kFirst, kPrevious, kNext, kLast };
  class Work;

  void Open(std::shared_ptr<Connection> connection, const QString& statement);
  void Move(Step step);
  bool AskGuards();
  void RequireUnlocked() const;
  // Makes a change on the records read anew, standing on the current one, and shows them then. False when the
  // cursor went meanwhile.
  template <typename Change>
  bool ChangeRecord(Change change);
  // Gives the signals of a move: KeysChanged where that is so, Moved, AnotherRecord where that is so.
  enum class KeysAre { kSame, kChanged };
  void Tell(KeysAre keys);

  RecordSource source_;
  QString position_prefix_;
  QString statement_;
  std::shared_ptr<Connection> connection_;
  std::unique_ptr<Recordset> rows_;
  QVariant told_key_;
  bool locked_ = true;
  bool is_leaving_ = false;
  bool is_changing_ = false;
  std::vector<std::function<bool()>> guards_;
  std::function<void()> past_end_;
  std::function<void()> before_start_;
};

}  // namespace zelmar
