#include "store/people_collation.h"

#include <sqlite3.h>

#include <QString>
#include <algorithm>
#include <array>

#include "store/engine_handle.h"

namespace zelmar {

namespace {

// What a sign counts as: up to two plain small letters, 0 where there is none.
struct Plain {
  char32_t first = 0;
  char32_t second = 0;
};

// Letters that are no letter with an accent, and marks that are written in several ways.
struct SpecialSign {
  char32_t sign;
  Plain plain;
};
constexpr SpecialSign kSpecialSigns[] = {
    {0x00C6, {U'a', U'e'}}, {0x00E6, {U'a', U'e'}}, {0x0152, {U'o', U'e'}}, {0x0153, {U'o', U'e'}},
    {0x00DF, {U's', U's'}}, {0x1E9E, {U's', U's'}}, {0x00DE, {U't', U'h'}}, {0x00FE, {U't', U'h'}},
    {0x00D8, {U'o'}},       {0x00F8, {U'o'}},       {0x0110, {U'd'}},       {0x0111, {U'd'}},
    {0x00D0, {U'd'}},       {0x00F0, {U'd'}},       {0x0141, {U'l'}},       {0x0142, {U'l'}},
    {0x0126, {U'h'}},       {0x0127, {U'h'}},       {0x0131, {U'i'}},       {0x2018, {U'\''}},
    {0x2019, {U'\''}},      {0x02BC, {U'\''}},      {0x201C, {U'"'}},       {0x201D, {U'"'}},
    {0x2010, {U'-'}},       {0x2011, {U'-'}},       {0x2013, {U'-'}},       {0x2014, {U'-'}},
    {0x00A0, {U' '}},
};

constexpr char32_t kFirstBeyondAscii = 0x80;
constexpr char32_t kTableEnd =
    0x0400;  // Latin and Greek letters, and the accents that are signs of their own
constexpr char32_t kNotUtf8 = 0x110000;

bool IsAccent(char32_t sign) {
  return QChar::category(sign) == QChar::Mark_NonSpacing;
}

// Latin and Greek letters are taken apart; elsewhere a mark makes another letter.
bool IsTakenApart(char32_t sign) {
  return sign < kTableEnd || (sign >= 0x1E00 && sign < 0x2000);
}

Plain ComputePlain(char32_t sign) {
  for (const SpecialSign& special : kSpecialSigns)
    if (special.sign == sign) return special.plain;
  if (sign >= kNotUtf8) return {sign};
  if (!IsTakenApart(sign)) return {QChar::toCaseFolded(sign)};
  if (IsAccent(sign)) return {};
  char32_t base = sign;
  for (QString parts = QChar::decomposition(base);
       !parts.isEmpty() && QChar::decompositionTag(base) == QChar::Canonical;
       parts = QChar::decomposition(base))
    base = parts.at(0).unicode();
  return {QChar::toCaseFolded(base)};
}

Plain PlainOf(char32_t sign) {
  static const auto table = [] {
    std::array<Plain, kTableEnd> made;
    for (char32_t i = 0; i < kTableEnd; ++i) made[i] = ComputePlain(i);
    return made;
  }();
  return sign < kTableEnd ? table[sign] : ComputePlain(sign);
}

constexpr bool IsDigit(char32_t sign) {
  return sign >= U'0' && sign <= U'9';
}

// A text as its plain letters, one after another.
class PlainLetters {
 public:
  explicit PlainLetters(std::string_view text) : place_(text.data()), end_(place_ + text.size()) {
    Advance();
  }

  bool AtEnd() const { return at_end_; }
  char32_t Letter() const { return letter_; }

  void Advance() {
    if (second_ != 0) {
      letter_ = second_;
      second_ = 0;
      return;
    }
    while (place_ != end_) {
      const auto byte = static_cast<unsigned char>(*place_);
      if (byte < kFirstBeyondAscii) {
        ++place_;
        letter_ = byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte;
        return;
      }
      const Plain plain = PlainOf(NextSign());
      if (plain.first == 0) continue;
      letter_ = plain.first;
      second_ = plain.second;
      return;
    }
    at_end_ = true;
    letter_ = 0;
  }

 private:
  // The sign of several bytes at this place.
  char32_t NextSign() {
    const auto lead = static_cast<unsigned char>(*place_);
    const int length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || end_ - place_ < length)
      return kNotUtf8 + static_cast<unsigned char>(*place_++);
    auto sign = static_cast<char32_t>(lead & (0x7F >> length));
    for (int i = 1; i < length; ++i) {
      const auto byte = static_cast<unsigned char>(place_[i]);
      if ((byte & 0xC0U) != 0x80U) return kNotUtf8 + static_cast<unsigned char>(*place_++);
      sign = sign << 6U | (byte & 0x3FU);
    }
    place_ += length;
    return sign;
  }

  const char* place_;
  const char* end_;
  char32_t letter_ = 0;
  char32_t second_ = 0;
  bool at_end_ = false;
};

// Both stand on a digit: compares the numbers that begin here and goes behind them.
int CompareNumbers(PlainLetters& first, PlainLetters& second) {
  while (first.Letter() == U'0') first.Advance();
  while (second.Letter() == U'0') second.Advance();
  int difference = 0;  // of the first digits that differ; counts when both numbers are of one length
  for (; IsDigit(first.Letter()) && IsDigit(second.Letter()); first.Advance(), second.Advance())
    if (difference == 0) difference = static_cast<int>(first.Letter()) - static_cast<int>(second.Letter());
  if (IsDigit(first.Letter())) return 1;
  if (IsDigit(second.Letter())) return -1;
  return difference;
}

// The bytes with which both begin, up to a place where a sign begins that is no later part of a number.
std::size_t CommonStart(std::string_view first, std::string_view second) {
  const auto differ = std::mismatch(first.begin(), first.end(), second.begin(), second.end()).first;
  auto start = static_cast<std::size_t>(differ - first.begin());
  const auto belongs_to_next = [](char byte) {
    return static_cast<unsigned char>(byte) >= kFirstBeyondAscii || IsDigit(static_cast<unsigned char>(byte));
  };
  while (start > 0 && belongs_to_next(first[start - 1])) --start;
  return start;
}

int ComparePlain(std::string_view first, std::string_view second) {
  const std::size_t start = CommonStart(first, second);
  PlainLetters a(first.substr(start)), b(second.substr(start));
  while (!a.AtEnd() && !b.AtEnd()) {
    if (IsDigit(a.Letter()) && IsDigit(b.Letter())) {
      if (const int order = CompareNumbers(a, b); order != 0) return order;
      continue;
    }
    if (a.Letter() != b.Letter()) return a.Letter() < b.Letter() ? -1 : 1;
    a.Advance();
    b.Advance();
  }
  return static_cast<int>(b.AtEnd()) - static_cast<int>(a.AtEnd());
}

int CompareForEngine(void*, int first_size, const void* first, int second_size, const void* second) {
  return CompareAsPeopleDo({static_cast<const char*>(first), static_cast<std::size_t>(first_size)},
                           {static_cast<const char*>(second), static_cast<std::size_t>(second_size)});
}

}  // namespace

int CompareAsPeopleDo(std::string_view first, std::string_view second) {
  const int order = ComparePlain(first, second);
  return order != 0 ? order : first.compare(second);
}

void AddPeopleCollation(const QSqlDatabase& database) {
  sqlite3* const engine = EngineHandle(database);
  if (engine == nullptr) return;
  sqlite3_create_collation_v2(engine, QString::fromUtf16(kPeopleCollation).toLatin1().constData(),
                              SQLITE_UTF8, nullptr, &CompareForEngine, nullptr);
}

}  // namespace zelmar
