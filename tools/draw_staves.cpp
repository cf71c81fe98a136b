// draw_staves <build folder> <output folder>: pictures of eight bars of some tunes of the library on the
// staff, for the pages of docs.

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <cstdio>

#include "model/globals.h"
#include "notation/ctl_quil_staff.h"
#include "platform/failure.h"
#include "platform/numbers.h"
#include "platform/widgets/widget_services.h"
#include "shell/theme.h"
#include "store/tune_loader.h"

namespace {

using namespace zelmar;

struct Piece {
  const char* picture;
  const char* code_name;
  std::uint8_t track;
  const char* clef;
  std::int16_t first_bar;
  std::int16_t semitones;      // up, from how the tune is stored
  std::int16_t key_signature;  // once it is transposed
  std::uint8_t second_track;   // whose notes join the first's in chords; 0 for none
};

constexpr int kAsStored = 99;
constexpr Piece kPieces[] = {
    {"staff-four-sharps.png", "GoodKingWenceslas", 1, "Treble", 1, 0, kAsStored, 0},
    {"staff-five-flats.png", "AmazingGrace", 1, "Treble", 1, -5, -5, 0},
    {"staff-compound-time.png", "IrishWasherwoman", 1, "Treble", 1, 0, kAsStored, 0},
    {"staff-chords.png", "OldHundredth", 1, "Treble", 1, 0, kAsStored, 2},
    {"staff-bass.png", "MinuetInG", 2, "Bass", 1, 0, kAsStored, 0},
    {"staff-rests.png", "FurElise", 1, "Treble", 1, 0, kAsStored, 0},
};

constexpr int kBarsAcross = 4;
constexpr int kRows = 2;
constexpr int kStaffWidth = 300;
constexpr int kStaffHeight = 136;
constexpr int kWordsHeight = 22;
constexpr double kPixelRatio = 2.0;

std::shared_ptr<Tune> Load(const Piece& piece) {
  auto tune = std::make_shared<Tune>();
  TuneLoader loader;
  QString name = QString::fromLatin1(piece.code_name);
  loader.DoLoad(name, tune);
  if (piece.key_signature != kAsStored) {
    for (const auto& tone : *tune) tone->SetNumber(Narrow<std::int16_t>(tone->Number() + piece.semitones));
    tune->SetKeySignature(piece.key_signature);
    tune->CalcEnharmonics();
  }
  if (piece.second_track != 0)
    for (const auto& tone : *tune)
      if (tone->Track() == piece.second_track) tone->SetTrack(piece.track);
  for (const auto& track : *tune->Tracks()) tune->CalcGaps(track->TrackNumber());
  return tune;
}

QImage Draw(const Piece& piece) {
  const std::shared_ptr<Tune> tune = Load(piece);
  const bool words = tune->Words()->Count() > 0;
  const int height = kStaffHeight + (words ? kWordsHeight : 0);
  QImage image(QSize(kStaffWidth * kBarsAcross, height * kRows) * kPixelRatio, QImage::Format_RGB32);
  image.setDevicePixelRatio(kPixelRatio);
  image.fill(Qt::white);
  QPainter painter(&image);
  for (int i = 0; i < kBarsAcross * kRows; ++i) {
    CtlQuilStaff staff;
    staff.resize(kStaffWidth, height);
    const int place = i % kBarsAcross;
    staff.SetSelectedTrack(piece.track);
    staff.SetClef(QString::fromLatin1(piece.clef));
    staff.SetShowClef(place == 0);
    staff.SetBarOffset(static_cast<std::int16_t>(place));
    staff.SetShowRests(true);
    staff.SetShowWords(words);
    staff.SetCurrentBar(static_cast<std::int16_t>(piece.first_bar + i));
    staff.Setup(tune);
    staff.RePaint();
    staff.render(&painter, QPoint(place * kStaffWidth, i / kBarsAcross * height));
  }
  return image;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  if (argc != 3) {
    std::fprintf(stderr, "usage: draw_staves <build folder> <output folder>\n");
    return 2;
  }
  const QDir folder(QDir(QString::fromLocal8Bit(argv[2])).absolutePath());
  QTemporaryDir home;
  try {
    // A copy, so that the build's own stays as it is.
    const QString library = home.filePath(QStringLiteral("Library.mdb"));
    if (!QFile::copy(QDir(QString::fromLocal8Bit(argv[1])).filePath(QStringLiteral("ZelmarTemplate.mdb")),
                     library)) {
      std::fprintf(stderr, "draw_staves: the library cannot be copied\n");
      return 1;
    }
    Global().DatabasePath = library;
    InstallWidgetServices();
    ApplyTheme(application, ColourScheme::kLight);
    for (const Piece& piece : kPieces) {
      if (Draw(piece).save(folder.filePath(QString::fromLatin1(piece.picture)), "PNG")) continue;
      std::fprintf(stderr, "draw_staves: %s cannot be saved\n", piece.picture);
      return 1;
    }
  } catch (const Failure& failure) {
    std::fprintf(stderr, "draw_staves: %s\n", qPrintable(failure.Description()));
    return 1;
  }
  return 0;
}
