#include "store/tune_saver.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "model/globals.h"
#include "model/tune.h"
#include "platform/paths.h"
#include "platform/services.h"
#include "store/connect_database.h"
#include "store/database_error.h"
#include "store/event_table.h"
#include "store/failure_words.h"
#include "store/recordset.h"
#include "store/statement_dialect.h"
#include "store/tune_name.h"
#include "store/tune_rows.h"

namespace zelmar {

namespace {

// The event tables that are being written at this moment, each by one save further out on the stack.
class EventTableInWork {
 public:
  // Takes the place of every save of the same table.
  EventTableInWork(const QString& path, const QString& code_name)
      : key_(path + u'|' + FoldedCodeName(code_name)) {
    for (EventTableInWork* other : All())
      if (other->key_ == key_) other->replaced_ = true;
    All().push_back(this);
  }
  ~EventTableInWork() { std::erase(All(), this); }
  EventTableInWork(const EventTableInWork&) = delete;
  EventTableInWork& operator=(const EventTableInWork&) = delete;

  // True once another save has begun to write the table, and once one has come to its end.
  bool Replaced() const { return replaced_; }
  bool WrittenByAnother() const { return written_by_another_; }

  // This save has come to its end.
  void TellWritten() const {
    for (EventTableInWork* other : All())
      if (other != this && other->key_ == key_) other->written_by_another_ = true;
  }

 private:
  static std::vector<EventTableInWork*>& All() {
    static std::vector<EventTableInWork*> all;
    return all;
  }

  QString key_;
  bool replaced_ = false;
  bool written_by_another_ = false;
};

// One run of SaveTune. What it opens closes with it.
class Save {
 public:
  Save(const std::shared_ptr<Tune>& tune, const QString& code_name, SavePortion portion,
       const std::function<bool()>& counts_as_changed)
      : tune_(tune), code_name_(code_name), portion_(portion), counts_as_changed_(counts_as_changed) {
    if (IsAllOr(SavePortion::kInfo)) progress_.parts.append(QStringLiteral("catalogue data"));
    if (IsAllOr(SavePortion::kWords)) progress_.parts.append(QStringLiteral("words"));
    progress_.parts.append(QStringLiteral("themes"));
    if (IsAllOr(SavePortion::kTracks)) progress_.parts.append(QStringLiteral("tracks"));
    if (IsAllOr(SavePortion::kNotes)) progress_.parts.append(QStringLiteral("notes"));
  }

  // False when the user does not want it, when there is no database, and when the event table is gone.
  bool Run() {
    // The name that it has already is no change of the tune.
    if (tune_->FileName() != code_name_) tune_->SetFileName(code_name_);
    if (tune_->TrackFilterOn() && !UserWantsFilteredTune()) return false;
    try {
      if (Write()) return true;
      MarkWhatIsNotWhole();
      return false;
    } catch (const DatabaseError& failure) {
      throw DatabaseError(failure.Number(), Told(failure));
    } catch (const OverflowError& failure) {
      throw OverflowError(Told(failure));
    } catch (const Failure& failure) {
      throw Failure(failure.Number(), Told(failure));
    }
  }

  const SaveProgress& Progress() const { return progress_; }

 private:
  bool Is(SavePortion portion) const { return portion_ == portion; }
  bool IsAllOr(SavePortion portion) const { return Is(SavePortion::kAll) || Is(portion); }

  static bool UserWantsFilteredTune() {
    return ShowMessage(MessageIcon::kQuestion,
                       QStringLiteral("This tune has a track filter set on, so some tracks will be silenced. "
                                      "Do you want to continue saving?"),
                       {}, MessageButtons::kYesNo, MessageAnswer::kNo) == MessageAnswer::kYes;
  }

  bool Write() {
    ChooseMelodyTrack();
    const QString path = ResolvePath(Global().DatabasePath);
    // That the database can only be read is told with the failure of the first row.
    ConnectDatabase(connection_, ReadOnlyNotice::kLeftToCaller);
    if (Global().DatabaseFailed) return false;
    RequireTuneName(code_name_);
    if ((Is(SavePortion::kTracks) || Is(SavePortion::kNotes)) && !CatalogueHasTune()) return true;
    if ((Is(SavePortion::kTracks) || Is(SavePortion::kInfo)) && !EventTableOpens()) return true;
    RequireTables();

    changes_ = tune_->Changes();
    if (IsAllOr(SavePortion::kInfo)) WriteCatalogueRow();
    if (IsAllOr(SavePortion::kWords)) WriteWords();
    WriteThemes();
    if (IsAllOr(SavePortion::kTracks)) WriteTracks();
    if (IsAllOr(SavePortion::kNotes)) {
      const EventTableInWork table(path, code_name_);
      MakeOrEmptyEventTable();
      const std::unique_ptr<Recordset> events = OpenedEventTable();
      if (!events) return false;
      WriteEvents(*events, table);
      // The save that came between has written the events anew, and has told how that went.
      if (table.Replaced()) return table.WrittenByAnother();
      table.TellWritten();
    }
    // What was changed while events were served may have come too late for its row, and is a change still.
    if (tune_->Changes() == changes_) tune_->SetChangedSinceLastSaved(false);
    EmptyLog();
    connection_->Close();
    return true;
  }

  void ChooseMelodyTrack() {
    if (tune_->MelodyTrack() != 0) return;
    if (tune_->Tracks()->Count() == 0)
      throw SubscriptError(QStringLiteral("The tune has no track that could carry its melody."));
    tune_->SetMelodyTrack(tune_->Tracks()->Item(1)->TrackNumber());
  }

  // --- Before the first row ---

  // The rows of the tune in one of the shared tables: what a search of the whole table would stop at.
  std::unique_ptr<Recordset> RowsOf(const QString& table, const QString& column) const {
    return Recordset::OpenStatement(connection_,
                                    QStringLiteral("SELECT * FROM %1 WHERE %2 = ").arg(table, column) +
                                        StatementDialect::Quoted(code_name_),
                                    CursorType::kKeyset, LockType::kBatchOptimistic);
  }

  bool CatalogueHasTune() const {
    if (!RowsOf(QStringLiteral("tblMelodies"), QStringLiteral("CodeName"))->Eof()) return true;
    ShowMessage(MessageIcon::kExclamation,
                QStringLiteral("Before you can save part of a file, you must have previously saved all parts "
                               "of it - Info, Tracks, and Notes. "),
                QStringLiteral("Info on this Zelmar file has not been saved yet."));
    return false;
  }

  bool EventTableOpens() const {
    try {
      OpenEventTable(connection_, code_name_);
      return true;
    } catch (const Failure& failure) {
      if (failure.Number() != error_number::kTableNotFound) throw;
      ShowMessage(
          MessageIcon::kExclamation,
          QStringLiteral("The notes for this melody have not been saved to disk yet. Please use SAVE ALL."));
      return false;
    }
  }

  // Every table that the portion goes to is there and takes its rows.
  void RequireTables() const {
    if (IsAllOr(SavePortion::kInfo)) RowsOf(QStringLiteral("tblMelodies"), QStringLiteral("CodeName"));
    if (IsAllOr(SavePortion::kWords)) RowsOf(QStringLiteral("tblWords"), QStringLiteral("FileName"));
    RowsOf(QStringLiteral("tblThemes"), QStringLiteral("CodeName"));
    if (IsAllOr(SavePortion::kTracks)) RowsOf(QStringLiteral("tblTracks"), QStringLiteral("CodeName"));
    if (!IsAllOr(SavePortion::kNotes) || HasEventTable(connection_, code_name_)) return;
    const EventFields fields(*Recordset::OpenTable(connection_, QStringLiteral("TemplateTune"),
                                                   CursorType::kForwardOnly, LockType::kReadOnly));
  }

  // --- Writing ---

  void WriteCatalogueRow() {
    const auto row = RowsOf(QStringLiteral("tblMelodies"), QStringLiteral("CodeName"));
    progress_.first_time = row->Eof();
    if (row->Eof()) row->AddNew();
    FillCatalogueRow(*row, *tune_, code_name_);
    changes_ = tune_->Changes();  // the blanks for what is empty are in the row
    row->UpdateBatch();
    if (connection_->LogIsLong()) EmptyLog();
    Written();
  }

  void WriteWords() {
    WriteRows(QStringLiteral("tblWords"), QStringLiteral("FileName"), *tune_->Words(), &FillWordRow);
    Written();
  }

  void WriteThemes() {
    WriteRows(QStringLiteral("tblThemes"), QStringLiteral("CodeName"), *tune_->Themes(), &FillThemeRow);
    Written();
  }

  void WriteTracks() {
    WriteRows(QStringLiteral("tblTracks"), QStringLiteral("CodeName"), *tune_->Tracks(), &FillTrackRow);
    Written();
  }

  // Puts a row for each item in the place of the rows that the tune has in the table.
  template <typename Items, typename FillRow>
  void WriteRows(const QString& table, const QString& column, const Items& items, FillRow fill) {
    const auto rows = RowsOf(table, column);
    if (!rows->Eof()) {
      connection_->Execute(QStringLiteral("DELETE * FROM %1 WHERE %2 = ").arg(table, column) +
                           StatementDialect::Quoted(code_name_));
      progress_.begun = true;
    }
    for (const auto& item : items) {
      rows->AddNew();
      fill(*rows, *item, code_name_);
      rows->UpdateBatch();
      progress_.begun = true;
      if (connection_->LogIsLong()) EmptyLog();
    }
  }

  void MakeOrEmptyEventTable() {
    const QString table = StatementDialect::Bracketed(code_name_);
    connection_->Execute(HasEventTable(connection_, code_name_)
                             ? QStringLiteral("delete * from ") + table
                             : QStringLiteral("select * into %1 from TemplateTune").arg(table));
    progress_.begun = true;
  }

  std::unique_ptr<Recordset> OpenedEventTable() const {
    ServeEvents();
    try {
      return OpenEventTable(connection_, code_name_, LockType::kBatchOptimistic);
    } catch (const Failure&) {
      return nullptr;
    }
  }

  // Ends early when another save takes its place. The tune may be edited while events are served: what is
  // written is what stands at each place when its turn comes.
  void WriteEvents(Recordset& rows, const EventTableInWork& table) {
    const EventFields fields(rows);
    PacedServing pace;
    for (qsizetype i = 1; i <= tune_->Count() && !table.Replaced(); ++i) {
      const std::shared_ptr<Tone> tone = tune_->Item(i);
      if (tone->EventType() == MUSIC_NOTE_OFF) continue;
      rows.AddNew();
      FillEventRow(rows, fields, *tone);
      rows.UpdateBatch();
      ++progress_.events;
      if (connection_->LogIsLong())
        EmptyLog();
      else
        pace.ServeWhenDue();
    }
    if (!table.Replaced()) EndPart();
  }

  // The one step that waits for the disk: the queue is served right before it and right behind it.
  void EmptyLog() const {
    ServeEvents();
    connection_->EmptyLog();
    ServeEvents();
  }

  void EndPart() {
    ++progress_.whole;
    progress_.begun = false;
  }

  void Written() {
    EndPart();
    ServeEvents();
  }

  // --- Failures ---

  // A tune of which the database has a part alone is not the one that is stored.
  void MarkWhatIsNotWhole() const {
    if (progress_.Wrote() && !tune_->ChangedSinceLastSaved()) tune_->SetChangedSinceLastSaved(true);
  }

  QString Told(const Failure& failure) const {
    MarkWhatIsNotWhole();
    return WordsOfFailedSave(code_name_, failure, progress_,
                             counts_as_changed_ ? counts_as_changed_() : tune_->ChangedSinceLastSaved());
  }

  const std::shared_ptr<Tune> tune_;
  const QString code_name_;
  const SavePortion portion_;
  const std::function<bool()> counts_as_changed_;
  std::shared_ptr<Connection> connection_;
  SaveProgress progress_;
  std::uint64_t changes_ = 0;  // of the tune, as far as they are sure to be written
};

}  // namespace

SavePortion SavePortionOf(const QString& word) {
  static const std::pair<QLatin1String, SavePortion> kWords[] = {
      {QLatin1String("ALL"), SavePortion::kAll},     {QLatin1String("Info"), SavePortion::kInfo},
      {QLatin1String("Words"), SavePortion::kWords}, {QLatin1String("Tracks"), SavePortion::kTracks},
      {QLatin1String("Notes"), SavePortion::kNotes},
  };
  for (const auto& [text, portion] : kWords)
    if (word == text) return portion;
  return SavePortion::kThemes;
}

void SaveTune(const std::shared_ptr<Tune>& tune, const QString& code_name, bool& failed, SavePortion portion,
              SaveProgress* progress, const std::function<bool()>& counts_as_changed) {
  failed = false;
  if (!tune) throw NoTuneInMemory();
  Save save(tune, code_name, portion, counts_as_changed);
  failed = !save.Run();
  if (progress != nullptr) *progress = save.Progress();
}

}  // namespace zelmar
