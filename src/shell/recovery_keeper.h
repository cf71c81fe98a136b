// Keeps the unsaved tune in a file of its own, so that the end of the program, however it comes, costs a few
// seconds of work at most; the next start offers what it finds.
//
// The tune is packed on the interface thread, which alone knows tunes, in slices that nobody notices. The
// bytes are written by a thread that knows nothing else, since a disk may take as long as it likes.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QThreadPool>
#include <memory>

class QTimer;

namespace zelmar {

class RecoveryFile;
class Tune;
class TunePacker;

class RecoveryKeeper : public QObject {
  Q_OBJECT

 public:
  // How often the tune in memory is looked at.
  static constexpr int kCheckMilliseconds = 10000;

  explicit RecoveryKeeper(QObject* parent = nullptr);
  // Waits for what is being written. The file stays as it is.
  ~RecoveryKeeper() override;

  // Has the tune in memory written when it holds unsaved work that is not in the file, and the file removed
  // when it holds none. Returns before the disk is done. Does nothing while the program closes.
  void Check();
  // The same at any time, and returns when the disk is done. False when there is unsaved work and no folder
  // takes the file.
  bool KeepNow();
  // What the file holds is saved or given up: it goes.
  void Forget();
  // To be told when another tune is in memory: that in the file was given up.
  void TuneReplaced();

 Q_SIGNALS:
  // The tune in memory is on the disk, as it was when it was packed.
  void Kept();

 private:
  struct Outcome {
    QString failure;  // empty when all went well
  };

  // True when the file holds the tune as it is, as far as the disk has not told otherwise.
  bool Holds(const std::shared_ptr<Tune>& tune) const;
  // Begins to keep the tune.
  void Begin(const std::shared_ptr<Tune>& tune);
  // Packs the next events, and has it all written once none are left.
  void Pack(qsizetype events);
  void Write();
  // Takes notice of what the disk has done.
  void Settle();
  void SayOnce(const QString& failure);

  std::unique_ptr<TunePacker> packer_;  // while a tune is being packed
  QTimer* slices_;                      // as often as the queue comes round
  std::shared_ptr<RecoveryFile> file_;  // made by the first write
  QThreadPool disk_;                    // of one thread: what it is given is done in order
  std::shared_ptr<Outcome> outcome_;    // of the write that the disk is busy with
  bool file_stands_ = false;            // or will, once the disk is done
  bool said_ = false;
  // What the file holds.
  std::weak_ptr<Tune> kept_tune_;
  std::uint64_t kept_changes_ = 0;
  QByteArray kept_head_;
};

// The keeper of this program; null when there is none.
RecoveryKeeper* TheRecoveryKeeper();

}  // namespace zelmar
