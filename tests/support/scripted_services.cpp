#include "support/scripted_services.h"

#include <QCoreApplication>
#include <cmath>

#include "model/globals.h"
#include "model/main_window_link.h"
#include "platform/failure.h"

namespace zelmar::testing_support {

VirtualClock::VirtualClock(double start_seconds) : microseconds_(0) {
  SetSeconds(start_seconds);
}

double VirtualClock::SecondsSinceMidnight() {
  return static_cast<double>(microseconds_) / 1e6;
}

void VirtualClock::SetSeconds(double seconds) {
  microseconds_ = static_cast<std::int64_t>(std::ceil(seconds * 1e6 - 1e-6));
}

void ScriptedEvents::Serve() {
  ++serve_count;
  clock_->AdvanceMicroseconds(step_microseconds);
  if (QCoreApplication::instance() != nullptr) QCoreApplication::processEvents();
  if (on_serve) on_serve(serve_count);
}

void ScriptedEvents::WaitUntil(double seconds) {
  if (seconds > clock_->SecondsSinceMidnight()) clock_->SetSeconds(seconds);
}

MessageAnswer ScriptedMessages::Show(MessageIcon icon, const QString& text, const QString& title,
                                     MessageButtons buttons, MessageAnswer default_button) {
  shown.append({icon, text, title, buttons, default_button});
  if (on_show) on_show();
  return answers.isEmpty() ? default_button : answers.takeFirst();
}

QString ScriptedInput::Ask(const QString& prompt, const QString& title, const QString& default_text) {
  shown.append({prompt, title, default_text});
  return answers.isEmpty() ? QString() : answers.takeFirst();
}

QString ScriptedFiles::Choose(FileChoice purpose, const QString& title, const QString& filter,
                              const QString& current) {
  shown.append({purpose, title, filter, current});
  return answers.isEmpty() ? QString() : answers.takeFirst();
}

bool ScriptedPrinter::PrintLandscape(QWidget& window) {
  printed.append(&window);
  return answer;
}

bool ScriptedPrinter::PrintPages(PrintedPages& pages) {
  if (!failure.isEmpty()) throw Failure(error_number::kFileAccess, failure);
  if (!answer) return false;
  const int count = pages.LayOut(paper_width, paper_height);
  jobs.append({pages.Title(), count});
  for (int page = 1; painter != nullptr && page <= count; ++page) pages.Paint(page, *painter);
  return true;
}

void ScriptedChance::Seed(std::uint32_t seed) {
  seeds.append(seed);
  series_.Seed(seed);
}

bool ScriptedMedia::Play(const QString& path, QWidget*) {
  played.append(path);
  return available;
}

void RecordingMidiOutput::Keep(SentMessage::Kind kind, const QByteArray& bytes, std::uint32_t packed) {
  sent.push_back({SecondsSinceMidnight(), bytes, packed, kind});
}

int RecordingMidiOutput::Open(int device) {
  Keep(SentMessage::Kind::kOpen);
  if (device < 0 || device >= device_names.size()) return kBadDeviceNumber;
  const int result = open_results.value(device, kSuccess);
  if (result == kSuccess) opened_device = device;
  return result;
}

void RecordingMidiOutput::Close() {
  Keep(SentMessage::Kind::kClose);
  opened_device = -1;
}

void RecordingMidiOutput::Reset() {
  Keep(SentMessage::Kind::kReset);
}

void RecordingMidiOutput::ShortMessage(std::uint32_t packed) {
  QByteArray bytes;
  const auto status = packed & 0xF0U;
  const int length = status == 0xC0U || status == 0xD0U ? 2 : 3;
  for (int i = 0; i < length; ++i) bytes.append(static_cast<char>((packed >> (8 * i)) & 0xFFU));
  Keep(SentMessage::Kind::kShort, bytes, packed);
}

void RecordingMidiOutput::LongMessage(const QByteArray& bytes) {
  Keep(SentMessage::Kind::kLong, bytes);
}

std::vector<std::uint32_t> RecordingMidiOutput::ShortMessages() const {
  std::vector<std::uint32_t> words;
  for (const SentMessage& message : sent)
    if (message.kind == SentMessage::Kind::kShort) words.push_back(message.packed);
  return words;
}

int RecordingMidiOutput::CountOf(SentMessage::Kind kind) const {
  return static_cast<int>(std::count_if(sent.begin(), sent.end(),
                                        [kind](const SentMessage& message) { return message.kind == kind; }));
}

ScriptedPlatform::ScriptedPlatform()
    : clock(std::make_shared<VirtualClock>()),
      events(std::make_shared<ScriptedEvents>(clock)),
      messages(std::make_shared<ScriptedMessages>()),
      input(std::make_shared<ScriptedInput>()),
      files(std::make_shared<ScriptedFiles>()),
      printer(std::make_shared<ScriptedPrinter>()),
      pages(std::make_shared<ScriptedPages>()),
      media(std::make_shared<ScriptedMedia>()),
      midi(std::make_shared<RecordingMidiOutput>()),
      chance(std::make_shared<ScriptedChance>()),
      before_(Platform()) {
  Platform() = {clock, events, messages, input, files, printer, pages, media, midi, chance};
  SetMainWindowLink(nullptr);
  ResetGlobals();
}

ScriptedPlatform::~ScriptedPlatform() {
  Platform() = before_;
  SetMainWindowLink(nullptr);
  ResetGlobals();
}

}  // namespace zelmar::testing_support
