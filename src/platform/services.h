// The platform services: everything that Zelmar asks of the machine it runs on. Each is an interface with a
// real implementation and a scripted one for tests; the set in use is chosen once at start.
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <memory>

class QPainter;
class QWidget;

namespace zelmar {

// Wall time.
class Clock {
 public:
  virtual ~Clock() = default;
  // Seconds since midnight, with a fraction.
  virtual double SecondsSinceMidnight() = 0;
};

// The event queue of the one interface thread.
class EventService {
 public:
  virtual ~EventService() = default;
  // Handles what waits in the queue and returns.
  virtual void Serve() = 0;
  // Handles the queue until the clock reads `seconds` since midnight. May return earlier, after an event; the
  // caller looks at the clock itself.
  virtual void WaitUntil(double seconds) = 0;
};

enum class MessageIcon { kNone, kInformation, kExclamation, kCritical, kQuestion };
enum class MessageButtons { kOk, kOkCancel, kYesNo, kYesNoCancel };
// kClosed: a box of kYesNo was closed by Esc or from its frame, which answers neither.
enum class MessageAnswer { kOk, kCancel, kYes, kNo, kClosed };

// Message boxes.
class MessageService {
 public:
  virtual ~MessageService() = default;
  // Shows a modal box and gives the button that closed it. An empty title stands for the application's own.
  virtual MessageAnswer Show(MessageIcon icon, const QString& text, const QString& title,
                             MessageButtons buttons, MessageAnswer default_button) = 0;
};

// Input boxes.
class InputService {
 public:
  virtual ~InputService() = default;
  // Asks for one line of text. Cancel gives a null text; what was confirmed is never null, empty as it may
  // be.
  virtual QString Ask(const QString& prompt, const QString& title, const QString& default_text) = 0;
};

enum class FileChoice { kOpen, kSave };

// File choosers.
class FileService {
 public:
  virtual ~FileService() = default;
  // Full path of the chosen file, empty when none was chosen. `filter` reads "Words (*.EXT)|*.EXT".
  virtual QString Choose(FileChoice purpose, const QString& title, const QString& filter,
                         const QString& current) = 0;
};

// Pages that paint themselves one by one, as the printer and a PDF file take them. Lengths are points, 72 to
// the inch.
class PrintedPages {
 public:
  virtual ~PrintedPages() = default;
  virtual QString Title() const = 0;
  // Divides what there is into pages with so much room between their margins; gives the number of pages.
  virtual int LayOut(double width, double height) = 0;
  // Paints page `page`, from 1, with the corner of its room at the origin.
  virtual void Paint(int page, QPainter& painter) = 0;
};

// The printer.
class PrintService {
 public:
  virtual ~PrintService() = default;
  // Prints the window on a landscape page, on a printer or into a file. False when the user cancels. Throws
  // Failure when the page cannot be printed.
  virtual bool PrintLandscape(QWidget& window) = 0;
  // Prints the pages that the person chooses of `pages`, in the same two ways. False when the user cancels.
  // Throws Failure when they cannot be printed.
  virtual bool PrintPages(PrintedPages& pages) = 0;
};

// Pages: help and biographies, inside the program or outside it.
class PageService {
 public:
  virtual ~PageService() = default;
  // Opens a web address in the person's own browser, or a "mailto:" address as a letter in their mail
  // program.
  virtual void OpenWebAddress(const QString& address) = 0;
};

// Moving pictures.
class MediaService {
 public:
  virtual ~MediaService() = default;
  virtual bool Available() const = 0;
  // Plays the file into `surface`. False when the file cannot be played.
  virtual bool Play(const QString& path, QWidget* surface) = 0;
  virtual void Stop() = 0;
};

// One MIDI output at a time, opened by number. Results are 0 for success; other codes are put into words by
// ErrorText.
class MidiOutput {
 public:
  static constexpr int kSuccess = 0;
  static constexpr int kUnspecifiedError = 1;
  static constexpr int kBadDeviceNumber = 2;  // no device has this number
  static constexpr int kNotEnabled = 3;       // the device is there and could not be started
  static constexpr int kAllocated = 4;        // the device is in use

  virtual ~MidiOutput() = default;
  virtual int DeviceCount() = 0;
  virtual QString DeviceName(int device) = 0;
  virtual int Open(int device) = 0;
  virtual void Close() = 0;
  // Silences everything that sounds.
  virtual void Reset() = 0;
  // One channel message: status in the low byte, then data 1, then data 2. Goes out at once, without
  // allocation.
  virtual void ShortMessage(std::uint32_t packed) = 0;
  // One system exclusive message, bytes from 240 to 247 unchanged.
  virtual void LongMessage(const QByteArray& bytes) = 0;
  virtual QString ErrorText(int code) = 0;
};

// Chance: what a quiz asks, what a juke box plays next.
class Chance {
 public:
  virtual ~Chance() = default;
  // Begins the series of draws that belongs to `seed`.
  virtual void Seed(std::uint32_t seed) = 0;
  // Begins a series that nobody foresees.
  virtual void SeedAnew() = 0;
  // The next draw: from 0 on and below 1, in steps of 2 to the power of -32. Finer steps would let `Rnd() * n
  // + 1` round up to n + 1; with these it is exact for every n up to 2 million.
  virtual double Rnd() = 0;
};

// The set of services in use.
struct Services {
  std::shared_ptr<Clock> clock;
  std::shared_ptr<EventService> events;
  std::shared_ptr<MessageService> messages;
  std::shared_ptr<InputService> input;
  std::shared_ptr<FileService> files;
  std::shared_ptr<PrintService> printer;
  std::shared_ptr<PageService> pages;
  std::shared_ptr<MediaService> media;
  std::shared_ptr<MidiOutput> midi;
  std::shared_ptr<Chance> chance;
};

// The services of this process. Assign members at start, or in a test's fixture; a fresh process has the real
// clock, event queue and chance and no other service.
Services& Platform();

// Shorthands over Platform().
double SecondsSinceMidnight();
void ServeEvents();
void WaitUntil(double seconds);
MessageAnswer ShowMessage(MessageIcon icon, const QString& text, const QString& title = {},
                          MessageButtons buttons = MessageButtons::kOk,
                          MessageAnswer default_button = MessageAnswer::kOk);
QString InputBox(const QString& prompt, const QString& title, const QString& default_text = {});
QString ChooseFile(FileChoice purpose, const QString& title, const QString& filter, const QString& current);
void SeedAnew();
double Rnd();
// The integer part of Rnd() * count: 0 to count - 1, each as likely. Throws SubscriptError when there is
// nothing to choose from.
std::int32_t DrawBelow(std::int32_t count);

// Serves the queue only when a few milliseconds have passed since this object last did: for loops over rows.
class PacedServing {
 public:
  void ServeWhenDue();

 private:
  double last_served_ = -1.0;
};

}  // namespace zelmar
