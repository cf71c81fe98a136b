// Values one after another in a run of bytes, least significant byte first, and back.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QtEndian>
#include <bit>
#include <cstring>
#include <type_traits>

#include "platform/failure.h"

namespace zelmar {

// Puts values into room that is known to suffice.
class ByteFiller {
 public:
  explicit ByteFiller(char* place) : place_(place) {}

  template <typename T>
  void Put(T value) {
    if constexpr (std::is_same_v<T, double>) {
      Put(std::bit_cast<std::uint64_t>(value));
    } else {
      qToLittleEndian(value, place_);
      place_ += sizeof(T);
    }
  }
  const char* Place() const { return place_; }

 private:
  char* place_;
};

// Puts values at the end of an array that grows.
class ByteWriter {
 public:
  template <typename T>
  void Put(T value) {
    const qsizetype size = bytes_.size();
    bytes_.resize(size + static_cast<qsizetype>(sizeof(T)));
    ByteFiller(bytes_.data() + size).Put(value);
  }
  // A null text stays one.
  void Put(const QString& text) {
    Put(text.isNull() ? std::int32_t{-1} : static_cast<std::int32_t>(text.size()));
    const qsizetype size = bytes_.size();
    bytes_.resize(size + text.size() * 2);
    qToLittleEndian<quint16>(text.constData(), text.size(), bytes_.data() + size);
  }
  void Put(const char*) = delete;

  const QByteArray& Bytes() const { return bytes_; }

 private:
  QByteArray bytes_;
};

// Takes values from bytes that may be anything. Throws Failure at the end of the bytes.
class ByteReader {
 public:
  explicit ByteReader(QByteArrayView bytes) : bytes_(bytes) {}

  template <typename T>
  T Take() {
    if constexpr (std::is_same_v<T, double>) {
      return std::bit_cast<double>(Take<std::uint64_t>());
    } else {
      return qFromLittleEndian<T>(Next(static_cast<qsizetype>(sizeof(T))));
    }
  }
  QString TakeText() {
    const auto size = Take<std::int32_t>();
    if (size == -1) return {};
    if (size < 0 || size > Left() / 2) Cut();
    if (size == 0) return QStringLiteral("");
    QString text(size, Qt::Uninitialized);
    qFromLittleEndian<quint16>(Next(size * 2), size, text.data());
    return text;
  }
  bool TakeFlag() {
    const auto flag = Take<std::uint8_t>();
    if (flag > 1)
      throw Failure(error_number::kInvalidCall, QStringLiteral("a truth value is neither 0 nor 1"));
    return flag == 1;
  }
  // How many items of at least `smallest` bytes follow.
  qsizetype TakeCount(qsizetype smallest) {
    const auto count = Take<std::uint32_t>();
    if (count > Left() / smallest) Cut();
    return count;
  }
  qsizetype Left() const { return bytes_.size() - place_; }
  // A reader of what stands behind the next `size` bytes.
  ByteReader Behind(qsizetype size) const { return ByteReader(bytes_.sliced(place_ + size)); }

 private:
  const char* Next(qsizetype size) {
    if (size > Left()) Cut();
    const char* const here = bytes_.data() + place_;
    place_ += size;
    return here;
  }
  [[noreturn]] static void Cut() {
    throw Failure(error_number::kInvalidCall, QStringLiteral("it ends too early"));
  }

  QByteArrayView bytes_;
  qsizetype place_ = 0;
};

}  // namespace zelmar
