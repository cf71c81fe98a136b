// The scripted twins of the platform services: time that a test moves, boxes whose answers are laid out
// beforehand, a MIDI output that keeps what it was sent.
#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <vector>

#include "platform/random_chance.h"
#include "platform/services.h"

namespace zelmar::testing_support {

// A clock that stands still until the event service or a test moves it. Counts microseconds, so sums stay
// exact.
class VirtualClock : public Clock {
 public:
  explicit VirtualClock(double start_seconds = 36000.0);
  double SecondsSinceMidnight() override;
  void AdvanceMicroseconds(std::int64_t microseconds) { microseconds_ += microseconds; }
  void SetSeconds(double seconds);

 private:
  std::int64_t microseconds_;
};

// Serving moves the virtual clock by a step, waiting moves it to the moment waited for. The real queue is
// served too, so that timers and posted events of a window take their turn.
class ScriptedEvents : public EventService {
 public:
  explicit ScriptedEvents(std::shared_ptr<VirtualClock> clock) : clock_(std::move(clock)) {}

  void Serve() override;
  void WaitUntil(double seconds) override;

  // Called at each serving, with the count so far: where a test presses buttons in the middle of a command.
  std::function<void(int count)> on_serve;
  std::int64_t step_microseconds = 10;
  int serve_count = 0;

 private:
  std::shared_ptr<VirtualClock> clock_;
};

struct ShownMessage {
  MessageIcon icon;
  QString text;
  QString title;
  MessageButtons buttons;
  MessageAnswer default_button;
};

// Answers each box from a list, then with the box's default button.
class ScriptedMessages : public MessageService {
 public:
  MessageAnswer Show(MessageIcon icon, const QString& text, const QString& title, MessageButtons buttons,
                     MessageAnswer default_button) override;

  QList<ShownMessage> shown;
  QList<MessageAnswer> answers;
  // Called while each box stands: what events may bring meanwhile.
  std::function<void()> on_show;
};

struct ShownInput {
  QString prompt;
  QString title;
  QString default_text;
};

// Answers each input box from a list, then with an empty text, as Cancel does.
class ScriptedInput : public InputService {
 public:
  QString Ask(const QString& prompt, const QString& title, const QString& default_text) override;

  QList<ShownInput> shown;
  QList<QString> answers;
};

struct ShownFileChoice {
  FileChoice purpose;
  QString title;
  QString filter;
  QString current;
};

class ScriptedFiles : public FileService {
 public:
  QString Choose(FileChoice purpose, const QString& title, const QString& filter,
                 const QString& current) override;

  QList<ShownFileChoice> shown;
  QList<QString> answers;
};

// Pages that were printed.
struct PrintedJob {
  QString title;
  int pages;
};

// Keeps what it is given to print. Pages are laid out for the room of its paper and, where a test gives it a
// painter, painted.
class ScriptedPrinter : public PrintService {
 public:
  bool PrintLandscape(QWidget& window) override;
  bool PrintPages(PrintedPages& pages) override;

  QList<QWidget*> printed;
  QList<PrintedJob> jobs;
  double paper_width = 500.0;  // points
  double paper_height = 750.0;
  QPainter* painter = nullptr;
  bool answer = true;
  QString failure;  // thrown in place of printing pages, when it is not empty
};

class ScriptedPages : public PageService {
 public:
  void OpenWebAddress(const QString& address) override { opened.append(address); }

  QList<QString> opened;
};

class ScriptedMedia : public MediaService {
 public:
  bool Available() const override { return available; }
  bool Play(const QString& path, QWidget* surface) override;
  void Stop() override { ++stops; }

  bool available = true;
  QList<QString> played;
  int stops = 0;
};

// Draws from a list, then from a series that is always the same.
class ScriptedChance : public Chance {
 public:
  ScriptedChance() { series_.Seed(1); }
  void Seed(std::uint32_t seed) override;
  void SeedAnew() override { ++fresh_series; }
  double Rnd() override { return draws.isEmpty() ? series_.Rnd() : draws.takeFirst(); }

  QList<double> draws;
  QList<std::uint32_t> seeds;
  int fresh_series = 0;

 private:
  RandomChance series_;
};

struct SentMessage {
  double seconds;        // since midnight, by the clock in use
  QByteArray bytes;      // as on the wire; "open", "close" and "reset" leave it empty
  std::uint32_t packed;  // the word of a short message, 0 otherwise
  enum class Kind { kShort, kLong, kOpen, kClose, kReset } kind;
};

// Keeps every message with its time. Devices, and the result of opening each, are a list that a test fills.
class RecordingMidiOutput : public MidiOutput {
 public:
  int DeviceCount() override { return static_cast<int>(device_names.size()); }
  QString DeviceName(int device) override { return device_names.value(device); }
  int Open(int device) override;
  void Close() override;
  void Reset() override;
  void ShortMessage(std::uint32_t packed) override;
  void LongMessage(const QByteArray& bytes) override;
  QString ErrorText(int code) override { return QStringLiteral("error %1").arg(code); }

  // Short messages only, in order.
  std::vector<std::uint32_t> ShortMessages() const;
  int CountOf(SentMessage::Kind kind) const;

  QList<QString> device_names = {QStringLiteral("Recorder")};
  QList<int> open_results;  // by device; a device beyond the list opens
  int opened_device = -1;
  std::vector<SentMessage> sent;

 private:
  void Keep(SentMessage::Kind kind, const QByteArray& bytes = {}, std::uint32_t packed = 0);
};

// Puts a full set of scripted services in place for its lifetime, with fresh globals, and the old ones back
// after it.
class ScriptedPlatform {
 public:
  ScriptedPlatform();
  ~ScriptedPlatform();
  ScriptedPlatform(const ScriptedPlatform&) = delete;
  ScriptedPlatform& operator=(const ScriptedPlatform&) = delete;

  std::shared_ptr<VirtualClock> clock;
  std::shared_ptr<ScriptedEvents> events;
  std::shared_ptr<ScriptedMessages> messages;
  std::shared_ptr<ScriptedInput> input;
  std::shared_ptr<ScriptedFiles> files;
  std::shared_ptr<ScriptedPrinter> printer;
  std::shared_ptr<ScriptedPages> pages;
  std::shared_ptr<ScriptedMedia> media;
  std::shared_ptr<RecordingMidiOutput> midi;
  std::shared_ptr<ScriptedChance> chance;

 private:
  Services before_;
};

}  // namespace zelmar::testing_support
