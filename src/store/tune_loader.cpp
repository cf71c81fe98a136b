#include "store/tune_loader.h"

#include <QLocale>
#include <QPointer>
#include <array>
#include <utility>

#include "model/globals.h"
#include "model/main_window_link.h"
#include "platform/services.h"
#include "store/connect_database.h"
#include "store/database_error.h"
#include "store/event_table.h"
#include "store/recordset.h"
#include "store/statement_dialect.h"
#include "store/tune_rows.h"

namespace zelmar {

namespace {

constexpr qsizetype kLargeTune = 6000;  // above this many rows the user is asked for patience
constexpr std::int16_t kPercentCatalogue = 5;
constexpr std::int16_t kPercentTracks = 10;
constexpr std::int16_t kPercentEventsStart = 15;
constexpr std::int16_t kPercentEventsEnd = 55;

// The loader went while events were served.
struct LoaderGone {};

// `failure` with the place at which it came, keeping its number.
[[noreturn]] void ThrowAt(const QString& table, qsizetype row, const Failure& failure) {
  const QString description =
      QStringLiteral("%1, row %2: %3").arg(table, QString::number(row), failure.Description());
  if (failure.Number() == error_number::kOverflow) throw OverflowError(description);
  throw Failure(failure.Number(), description);
}

// Calls `take` for each row; a failure tells the table and the row.
template <typename TakeRow>
void ForEachRow(Recordset& rows, const QString& table, TakeRow take) {
  for (qsizetype row = 1; !rows.Eof(); ++row) {
    try {
      take();
    } catch (const Failure& failure) {
      ThrowAt(table, row, failure);
    }
    rows.MoveNext();
  }
}

// A connection to a signal that ends with its holder.
class Listening {
 public:
  explicit Listening(QMetaObject::Connection connection) : connection_(std::move(connection)) {}
  ~Listening() { QObject::disconnect(connection_); }
  Listening(const Listening&) = delete;
  Listening& operator=(const Listening&) = delete;

 private:
  QMetaObject::Connection connection_;
};

// A wait text that goes with the work it tells of.
class WaitText {
 public:
  ~WaitText() { Hide(); }
  void Hide() {
    if (std::exchange(shown_, false)) TheMainWindow().ShowWaitText(QString());
  }
  void Show(const QString& text) {
    shown_ = true;
    TheMainWindow().ShowWaitText(text);
  }

 private:
  bool shown_ = false;
};

// Channels by track number; tracks that do not exist leave the channel that a new tone has.
std::array<std::uint8_t, 256> ChannelsByTrack(const Tracks& tracks) {
  std::array<std::uint8_t, 256> channels{};
  channels.fill(Tone().Channel());
  for (const auto& track : tracks) channels[track->TrackNumber()] = track->Channel();
  return channels;
}

// A track that a repair put in has no bank yet.
std::uint8_t BankOfRow(const Recordset& row, const QString& field) {
  return row.IsNull(field) ? std::uint8_t{0} : row.Number<std::uint8_t>(field);
}

QString Caption(const Tune& tune) {
  if (tune.Composer() == u"Various" || tune.Composer().isEmpty()) return tune.Title();
  return tune.Composer() + QStringLiteral(" - ") + tune.Title();
}

}  // namespace

// One run of DoLoad. What it opens closes with it.
class TuneLoader::Load {
 public:
  explicit Load(TuneLoader& loader) : loader_(&loader) {}

  void Run(QString& code_name, std::shared_ptr<Tune>& target) {
    TheMainWindow().SetMyTune(nullptr);
    loader_->local_tune_.reset();
    loader_->tune_name_ = code_name;
    loader_->loaded_ok_ = false;
    const bool into_target = target != nullptr;

    ConnectDatabase(connection_);
    if (Global().DatabaseFailed) return;
    if (!ReadCatalogue(code_name) || !ReadTracks(code_name)) return;
    ReadWords(code_name);
    ReadThemes(code_name);
    code_name = catalogue_->Text(QStringLiteral("CodeName"));
    catalogue_.reset();
    if (!ReadEvents(code_name)) return;
    Prepare();

    QString caption;
    if (into_target) {
      target = tune_;
    } else {
      caption = HandToMainWindow(code_name);
    }
    connection_->Close();
    const QString name = code_name;
    Q_EMIT loader_->Done(name, caption);
    ServeEvents();
  }

 private:
  void Serve() {
    ServeEvents();
    RequireLoader();
  }

  void Tell(std::int16_t percent) {
    Q_EMIT loader_->PercentCompleted(percent);
    RequireLoader();
  }

  void RequireLoader() const {
    if (!loader_) throw LoaderGone();
  }

  // The rows that `statement` gives for a name, which it ends with, and the order behind that.
  std::unique_ptr<Recordset> Rows(const char* statement, const QString& code_name,
                                  const char* order = "") const {
    auto rows = Recordset::OpenStatement(
        connection_, QLatin1String(statement) + StatementDialect::Quoted(code_name) + QLatin1String(order),
        CursorType::kForwardOnly, LockType::kOptimistic);
    RequireLoader();
    return rows;
  }

  bool ReadCatalogue(const QString& code_name) {
    Serve();
    catalogue_ = Rows("SELECT * FROM tblMelodies WHERE CodeName = ", code_name);
    Serve();
    if (catalogue_->Eof()) return false;
    try {
      tune_ = TuneOfRow(*catalogue_);
    } catch (const Failure& failure) {
      ThrowAt(QStringLiteral("tblMelodies"), 1, failure);
    }
    RequireLoader();  // a row may have warned the user
    loader_->local_tune_ = tune_;
    Tell(kPercentCatalogue);
    return true;
  }

  bool ReadTracks(const QString& code_name) {
    const auto rows = Rows("SELECT * FROM tblTracks WHERE CodeName = ", code_name, " ORDER BY TrackNo");
    if (rows->Eof()) {
      ShowMessage(
          MessageIcon::kExclamation, QStringLiteral("No track data for ") + code_name,
          QStringLiteral("Please check the integrity of your database. Perhaps restore it from your backup"));
      return false;
    }
    bool first_seen = false;
    ForEachRow(*rows, QStringLiteral("tblTracks"), [&] {
      const auto number = rows->Number<std::uint8_t>(QStringLiteral("trackno"));
      if (number == 1) first_seen = true;
      TakeTrack(*rows, number);
      Serve();
    });
    if (!first_seen) tune_->Tracks()->Remove(FirstTrackKey());
    Tell(kPercentTracks);
    Tell(kPercentEventsStart);
    return true;
  }

  void TakeTrack(const Recordset& row, std::uint8_t number) {
    const QString name = row.TextOrBlank(QStringLiteral("TrackName"));
    const auto channel = row.Number<std::uint8_t>(QStringLiteral("Channel"));
    const auto instrument = row.Number<std::uint8_t>(QStringLiteral("DefaultInstrument"));
    const bool muted = row.YesNo(QStringLiteral("Muted"));
    const std::uint8_t bank_msb = BankOfRow(row, QStringLiteral("DefaultBankMSB"));
    const std::uint8_t bank_lsb = BankOfRow(row, QStringLiteral("DefaultBankLSB"));
    if (number != 1) {
      tune_->Tracks()->Add(name, number, channel, instrument, muted, bank_msb, bank_lsb,
                           QString::number(number));
      return;
    }
    Track& track = *tune_->Tracks()->Item(FirstTrackKey());
    track.SetDescription(name);
    track.SetChannel(channel);
    track.SetInstrument(instrument);
    track.SetMuted(muted);
    track.SetBankLSB32(bank_lsb);
    track.SetBankMSB0(bank_msb);
  }

  static QString FirstTrackKey() { return QStringLiteral("1"); }

  void ReadWords(const QString& code_name) {
    const auto rows = Rows("SELECT * FROM tblWords WHERE FileName = ", code_name, " ORDER BY Bar,Beat,Tick");
    ForEachRow(*rows, QStringLiteral("tblWords"), [&] {
      tune_->Words()->Add(rows->Number<std::int16_t>(QStringLiteral("Tick")),
                          rows->Number<std::int16_t>(QStringLiteral("Beat")),
                          rows->Number<std::int16_t>(QStringLiteral("Bar")),
                          rows->TextOrBlank(QStringLiteral("WordText")));
    });
  }

  void ReadThemes(const QString& code_name) {
    const auto rows = Rows("SELECT * FROM tblThemes WHERE CodeName = ", code_name, " ORDER BY ThemeNo");
    ForEachRow(*rows, QStringLiteral("tblThemes"), [&] {
      tune_->Themes()->Add(rows->Number<std::uint8_t>(QStringLiteral("ThemeNo")),
                           rows->Number<std::int16_t>(QStringLiteral("ThemeStartBar")),
                           rows->Number<std::int16_t>(QStringLiteral("ThemeEndBar")),
                           rows->TextOrBlank(QStringLiteral("ThemeNotes")),
                           rows->Number<std::uint8_t>(QStringLiteral("ThemeTrackNo")),
                           rows->Number<std::int16_t>(QStringLiteral("Rank")));
    });
  }

  // The tune's own table; nothing when it cannot be opened, which the user has then been told.
  std::unique_ptr<Recordset> OpenedEvents(const QString& code_name) const {
    try {
      return OpenEventTable(connection_, code_name, LockType::kOptimistic);
    } catch (const Failure& failure) {
      if (failure.Number() == error_number::kTableNotFound) {
        ShowMessage(MessageIcon::kNone, QStringLiteral("This melody table (") + code_name +
                                            QStringLiteral(") not found in database"));
      } else {
        ShowMessage(MessageIcon::kCritical,
                    QStringLiteral("Error while trying to load melody table (") + code_name +
                        QStringLiteral(").    Error no.") + QString::number(failure.Number()) +
                        QStringLiteral(".  ") + failure.Description(),
                    QStringLiteral("Tune table not found in database."));
      }
    }
    return nullptr;
  }

  bool ReadEvents(const QString& code_name) {
    const auto rows = OpenedEvents(code_name);
    RequireLoader();
    if (!rows) return false;
    rows->MoveFirst();
    const qsizetype count = rows->RecordCount();
    if (count > kLargeTune)
      wait_text_.Show(
          QStringLiteral(
              "Please be very patient. You are loading an extremely large tune file, in excess of 6,000 "
              "notes. (Length is ") +
          QLocale(QLocale::English, QLocale::UnitedStates).toString(static_cast<qlonglong>(count)) +
          QStringLiteral(" notes)."));
    Serve();

    const EventFields fields(*rows);
    const auto channels = ChannelsByTrack(*tune_->Tracks());
    const std::int16_t beats_per_bar = tune_->BeatsPerBar();
    const std::uint8_t beat_length = tune_->BeatLength();
    tune_->Tones()->Reserve(count);
    PacedServing pace;
    qsizetype done = 0;
    ForEachRow(*rows, u'[' + code_name + u']', [&] {
      auto tone = ToneOfRow(*rows, fields);
      tone->SetChannel(channels[tone->Track()]);
      tone->SetBeatsPerBar(beats_per_bar);
      tone->SetBeatLength(beat_length);
      tune_->Add(std::move(tone));
      ++done;
      constexpr int kShare = kPercentEventsEnd - kPercentEventsStart;
      Tell(Narrow<std::int16_t>(kPercentEventsStart + kShare * done / count));
      pace.ServeWhenDue();
      RequireLoader();
    });
    Global().TuneLoadedFlag = true;
    return true;
  }

  // Makes the events ready to play and to draw.
  void Prepare() {
    {
      // Nothing is thrown through the signal; the connection goes with the loader too.
      const Listening sorting(connect(tune_.get(), &Tune::SortPercent, loader_, [this](std::int16_t percent) {
        Q_EMIT loader_->PercentCompleted(
            RoundHalfEven<std::int16_t>(kPercentEventsEnd + 45.0 * percent / 100.0));
        ServeEvents();
      }));
      tune_->CalcNotesOff();
      tune_->SortStartTimes();
    }
    RequireLoader();
    tune_->SetBarNumber(1);
    tune_->SetBeatWithinBar(1);
    wait_text_.Hide();
    Tell(100);
    Serve();
  }

  QString HandToMainWindow(const QString& code_name) {
    TheMainWindow().SetMyTune(tune_);
    QString caption = Caption(*tune_);
    AddRecentTune(code_name, caption);
    TheMainWindow().RebuildRecentTunesMenu();
    tune_->SetChangedSinceLastSaved(false);
    loader_->loaded_ok_ = true;
    return caption;
  }

  QPointer<TuneLoader> loader_;
  std::shared_ptr<Connection> connection_;
  std::unique_ptr<Recordset> catalogue_;
  std::shared_ptr<Tune> tune_;
  WaitText wait_text_;
};

TuneLoader::TuneLoader() = default;

TuneLoader::~TuneLoader() = default;

void TuneLoader::DoLoad(QString& code_name, std::shared_ptr<Tune>& target) {
  try {
    Load(*this).Run(code_name, target);
  } catch (const LoaderGone&) {
    // Its window was closed in the middle: nobody waits for the tune any more.
  }
}

void TuneLoader::DoLoad(QString& code_name) {
  std::shared_ptr<Tune> none;
  DoLoad(code_name, none);
}

}  // namespace zelmar
