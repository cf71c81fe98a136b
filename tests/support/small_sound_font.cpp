#include "support/small_sound_font.h"

#include <QFile>
#include <QtEndian>
#include <cmath>
#include <numbers>

namespace zelmar::testing_support {

namespace {

constexpr int kRate = 44100;
constexpr int kPeriod = 100;  // samples: 441 Hz
constexpr int kPeriods = 40;
constexpr int kRootKey = 69;        // A4
constexpr int kRootCents = -4;      // from 441 to 440 Hz
constexpr int kSilenceBehind = 46;  // samples that the format asks for

// Generators of the format.
constexpr int kCoarseTune = 51;
constexpr int kInstrument = 41;
constexpr int kSampleId = 53;
constexpr int kSampleModes = 54;
constexpr int kLoops = 1;

class Bytes {
 public:
  Bytes& Word(int value) {
    char bytes[2];
    qToLittleEndian(static_cast<quint16>(value), bytes);
    data_.append(bytes, 2);
    return *this;
  }
  Bytes& Long(qsizetype value) {
    char bytes[4];
    qToLittleEndian(static_cast<quint32>(value), bytes);
    data_.append(bytes, 4);
    return *this;
  }
  Bytes& Byte(int value) {
    data_.append(static_cast<char>(value));
    return *this;
  }
  Bytes& Name(const QByteArray& name) {
    data_.append(name.leftJustified(20, '\0', true));
    return *this;
  }
  Bytes& Raw(const QByteArray& bytes) {
    data_.append(bytes);
    return *this;
  }
  const QByteArray& Data() const { return data_; }

 private:
  QByteArray data_;
};

QByteArray Chunk(const QByteArray& id, const QByteArray& data) {
  return Bytes().Raw(id).Long(data.size()).Raw(data).Raw(QByteArray(data.size() % 2, '\0')).Data();
}

QByteArray List(const QByteArray& kind, const QByteArray& chunks) {
  return Chunk("LIST", kind + chunks);
}

QByteArray Samples() {
  Bytes samples;
  for (int i = 0; i < kPeriod * kPeriods; ++i)
    samples.Word(static_cast<int>(std::lround(20000 * std::sin(2 * std::numbers::pi * i / kPeriod))));
  for (int i = 0; i < kSilenceBehind; ++i) samples.Word(0);
  return samples.Data();
}

// The nine tables of instruments, each with the record that ends it.
QByteArray Tables(const std::vector<SmallPreset>& presets) {
  Bytes phdr, pbag, pgen, inst, ibag, igen;
  int number = 0;
  for (const SmallPreset& preset : presets) {
    const QByteArray name = "Tone " + QByteArray::number(number);
    phdr.Name(name).Word(preset.program).Word(preset.bank).Word(number).Long(0).Long(0).Long(0);
    pbag.Word(number).Word(0);
    pgen.Word(kInstrument).Word(number);
    inst.Name(name).Word(number);
    ibag.Word(3 * number).Word(0);
    igen.Word(kCoarseTune).Word(preset.semitones).Word(kSampleModes).Word(kLoops).Word(kSampleId).Word(0);
    ++number;
  }
  phdr.Name("EOP").Word(0).Word(0).Word(number).Long(0).Long(0).Long(0);
  pbag.Word(number).Word(0);
  pgen.Word(0).Word(0);
  inst.Name("EOI").Word(number);
  ibag.Word(3 * number).Word(0);
  igen.Word(0).Word(0);
  constexpr int kLength = kPeriod * kPeriods;
  Bytes shdr;
  shdr.Name("Even tone").Long(0).Long(kLength).Long(kPeriod).Long(kLength - kPeriod).Long(kRate);
  shdr.Byte(kRootKey).Byte(kRootCents).Word(0).Word(1);
  shdr.Name("EOS").Long(0).Long(0).Long(0).Long(0).Long(0).Byte(0).Byte(0).Word(0).Word(0);
  const QByteArray no_modulators(10, '\0');
  return Chunk("phdr", phdr.Data()) + Chunk("pbag", pbag.Data()) + Chunk("pmod", no_modulators) +
         Chunk("pgen", pgen.Data()) + Chunk("inst", inst.Data()) + Chunk("ibag", ibag.Data()) +
         Chunk("imod", no_modulators) + Chunk("igen", igen.Data()) + Chunk("shdr", shdr.Data());
}

}  // namespace

bool WriteSmallSoundFont(const QString& path, const std::vector<SmallPreset>& presets) {
  const QByteArray information = Chunk("ifil", Bytes().Word(2).Word(1).Data()) +
                                 Chunk("isng", QByteArray("EMU8000\0", 8)) +
                                 Chunk("INAM", QByteArray("Small one\0", 10));
  const QByteArray font =
      Chunk("RIFF", "sfbk" + List("INFO", information) + List("sdta", Chunk("smpl", Samples())) +
                        List("pdta", Tables(presets)));
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(font) == font.size();
}

}  // namespace zelmar::testing_support
