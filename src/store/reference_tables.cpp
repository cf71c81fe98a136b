#include "store/reference_tables.h"

#include "model/globals.h"
#include "store/connect_database.h"
#include "store/recordset.h"

namespace zelmar {

namespace {

// The table of patches of each MIDI mode that has variation banks.
struct BankTable {
  const char16_t* mode;
  const char16_t* table;
};
constexpr BankTable kBankTables[] = {
    {u"GS", u"tblGSToneBank"}, {u"XG", u"tblXGToneBank"}, {u"GM2", u"tblGM2ToneBank"}};

}  // namespace

void LoadInstrumentTable() {
  std::shared_ptr<Connection> connection;
  ConnectDatabase(connection);
  Globals& globals = Global();
  if (globals.DatabaseFailed) return;
  const auto rows = Recordset::OpenTable(connection, QStringLiteral("tblinstruments"), CursorType::kStatic,
                                         LockType::kReadOnly);
  for (; !rows->Eof(); rows->MoveNext()) {
    const auto number = rows->Number<std::int32_t>(QStringLiteral("InstrumentNo"));
    if (number < 0 || number >= kInstrumentCount)
      throw SubscriptError(
          QStringLiteral("Subscript out of range: tblInstruments holds the instrument %1").arg(number));
    const auto place = static_cast<std::size_t>(number);
    globals.InstrumentNames[place] = rows->TextOrBlank(QStringLiteral("InstrumentName"));
    globals.InstrumentFavourite[place] = rows->YesNo(QStringLiteral("Favourite"));
    globals.InstrumentFamily[place] = rows->TextOrBlank(QStringLiteral("Family"));
    globals.InstrumentBestOctave[place] = rows->Number<std::uint8_t>(QStringLiteral("BestOctave"));
  }
}

void LoadToneBank() {
  Globals& globals = Global();
  globals.TheToneBanks = std::make_shared<Tonebanks>();
  for (const BankTable& bank : kBankTables) {
    if (globals.MidiMode != QStringView(bank.mode)) continue;
    std::shared_ptr<Connection> connection;
    ConnectDatabase(connection);
    if (globals.DatabaseFailed) return;
    const auto rows = Recordset::OpenTable(connection, QString::fromUtf16(bank.table), CursorType::kStatic,
                                           LockType::kReadOnly);
    for (; !rows->Eof(); rows->MoveNext())
      globals.TheToneBanks->Add(rows->Number<std::uint8_t>(QStringLiteral("Patch")),
                                rows->TextOrBlank(QStringLiteral("Name")),
                                rows->Number<std::uint8_t>(QStringLiteral("BankLSB")),
                                rows->Number<std::uint8_t>(QStringLiteral("BankMSB")));
  }
}

}  // namespace zelmar
