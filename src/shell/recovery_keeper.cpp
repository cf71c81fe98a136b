#include "shell/recovery_keeper.h"

#include <QDateTime>
#include <QPointer>
#include <QTimer>
#include <utility>

#include "model/globals.h"
#include "model/main_window_link.h"
#include "model/tune.h"
#include "platform/services.h"
#include "shell/unsaved_work.h"
#include "store/packed_tune.h"
#include "store/recovery_file.h"

namespace zelmar {

namespace {

// Events that are packed before the queue is served again: a fraction of a millisecond.
constexpr qsizetype kSlice = 4000;

QPointer<RecoveryKeeper>& KeeperInUse() {
  static QPointer<RecoveryKeeper> keeper;
  return keeper;
}

}  // namespace

RecoveryKeeper* TheRecoveryKeeper() {
  return KeeperInUse();
}

RecoveryKeeper::RecoveryKeeper(QObject* parent) : QObject(parent), slices_(new QTimer(this)) {
  disk_.setMaxThreadCount(1);
  auto* timer = new QTimer(this);
  timer->setObjectName(QStringLiteral("RecoveryTimer"));
  timer->setInterval(kCheckMilliseconds);
  connect(timer, &QTimer::timeout, this, &RecoveryKeeper::Check);
  timer->start();
  connect(slices_, &QTimer::timeout, this, [this] { Pack(kSlice); });
  KeeperInUse() = this;
}

RecoveryKeeper::~RecoveryKeeper() {
  disk_.waitForDone();
}

void RecoveryKeeper::Check() {
  // The end has its own question, and goes by the answer.
  if (Global().MainFormLoaded) return;
  const std::shared_ptr<Tune> tune = UnsavedTune();
  if (!tune)
    Forget();
  else if (!packer_ && !outcome_ && !Holds(tune))
    Begin(tune);
}

bool RecoveryKeeper::KeepNow() {
  const std::shared_ptr<Tune> tune = UnsavedTune();
  if (!tune) {
    Forget();
  } else if (packer_ || !Holds(tune)) {
    Begin(tune);
    Pack(TunePacker::kAllEvents);
  }
  disk_.waitForDone();
  Settle();
  return !tune || kept_tune_.lock() == tune;
}

void RecoveryKeeper::Forget() {
  slices_->stop();
  packer_.reset();
  kept_tune_.reset();
  if (std::exchange(file_stands_, false)) disk_.start([file = file_] { file->Remove(); });
}

void RecoveryKeeper::TuneReplaced() {
  if (Global().MainFormLoaded) return;
  const std::shared_ptr<Tune> kept = packer_ ? packer_->PackedTune() : kept_tune_.lock();
  if (!kept || kept != TheMainWindow().MyTune()) Forget();
}

bool RecoveryKeeper::Holds(const std::shared_ptr<Tune>& tune) const {
  // Events count as changed with the tune; what does not mark the tune is in the head.
  return kept_tune_.lock() == tune && kept_changes_ == tune->Changes() && kept_head_ == PackTuneHead(*tune);
}

void RecoveryKeeper::Begin(const std::shared_ptr<Tune>& tune) {
  packer_ = std::make_unique<TunePacker>(tune);
  slices_->start(0);
}

void RecoveryKeeper::Pack(qsizetype events) {
  if (!packer_) return;
  QString trouble;
  try {
    if (!packer_->Advance(events)) return;
    Write();
  } catch (const std::exception& failure) {
    kept_tune_.reset();
    trouble = QString::fromUtf8(failure.what());
  }
  slices_->stop();
  packer_.reset();
  if (!trouble.isEmpty()) SayOnce(trouble);
}

void RecoveryKeeper::Write() {
  kept_tune_ = packer_->PackedTune();
  kept_changes_ = packer_->Changes();
  kept_head_ = packer_->Head();
  if (!file_) file_ = std::make_shared<RecoveryFile>(RecoveryFolders());
  file_stands_ = true;
  outcome_ = std::make_shared<Outcome>();
  disk_.start([this, file = file_, outcome = outcome_, now = QDateTime::currentDateTimeUtc(),
               database = Global().DatabasePath, head = kept_head_, events = packer_->Events()] {
    try {
      file->Write(RecoveryContents(now, database, head, events));
    } catch (const std::exception& failure) {
      outcome->failure = QString::fromUtf8(failure.what());
    }
    QMetaObject::invokeMethod(this, &RecoveryKeeper::Settle, Qt::QueuedConnection);
  });
}

void RecoveryKeeper::Settle() {
  const std::shared_ptr<Outcome> outcome = std::exchange(outcome_, nullptr);
  if (!outcome) return;
  if (outcome->failure.isEmpty()) {
    Q_EMIT Kept();
    return;
  }
  // The next look tries again.
  kept_tune_.reset();
  SayOnce(outcome->failure);
}

void RecoveryKeeper::SayOnce(const QString& failure) {
  // At its end the program tells by itself what becomes of the tune.
  if (Global().MainFormLoaded || std::exchange(said_, true)) return;
  ShowMessage(
      MessageIcon::kExclamation,
      QStringLiteral("Zelmar keeps an unsaved tune in a file, for the case that the program ends "
                     "unexpectedly. It cannot do that now: %1\n\nThe tune in memory is whole. Save it "
                     "in good time.")
          .arg(failure),
      QStringLiteral("Unsaved tune not kept"));
}

}  // namespace zelmar
