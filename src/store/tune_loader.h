// Reads one tune from the database into a new Tune, telling of its progress, and hands it to the main window
// or to the caller. Serves events as it goes. One loader serves many loads, one after another.
#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "model/tune.h"

namespace zelmar {

class TuneLoader : public QObject {
  Q_OBJECT

 public:
  TuneLoader();
  ~TuneLoader() override;

  // Loads the tune into `target` when that holds a tune, else into the main window. Afterwards `code_name` is
  // spelled as stored. LoadedOk tells whether the load went well: no database, no such tune, no tracks and no
  // event table, the last two told to the user, just end it. Throws Failure (or DatabaseError) for a
  // statement that the engine refuses, a missing shared table, an event table without a row or a column, a
  // row of any table that a tune cannot hold, named in the description, and what CalcNotesOff and
  // SortStartTimes throw.
  void DoLoad(QString& code_name, std::shared_ptr<Tune>& target);
  void DoLoad(QString& code_name);

  // The CodeName last given to DoLoad.
  const QString& TuneName() const { return tune_name_; }
  void SetTuneName(const QString& name) { tune_name_ = name; }
  // True when the load ended well and the tune went to the main window.
  bool LoadedOk() const { return loaded_ok_; }

 Q_SIGNALS:
  void PercentCompleted(std::int16_t percent);
  // Once at the end of a load that reached the tune's notes; the caption is empty for a load into a target.
  void Done(const QString& code_name, const QString& caption);

 private:
  class Load;

  QString tune_name_;
  bool loaded_ok_ = false;
  std::shared_ptr<Tune> local_tune_;
};

}  // namespace zelmar
