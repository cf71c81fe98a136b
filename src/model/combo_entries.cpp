#include "model/combo_entries.h"

#include "model/globals.h"
#include "platform/failure.h"

namespace zelmar {

std::vector<ComboEntry> InstrumentEntries(int count) {
  if (count < 1 || count > kInstrumentCount) throw SubscriptError();
  std::vector<ComboEntry> entries;
  for (int number = 0; number < count; ++number)
    entries.push_back({QStringLiteral("%1.  (").arg(number) +
                           Global().InstrumentNames[static_cast<std::size_t>(number)] + QLatin1Char(')'),
                       number});
  return entries;
}

std::vector<ComboEntry> BankEntries(int instrument) {
  std::vector<ComboEntry> entries;
  for (const auto& bank : *Global().TheToneBanks)
    if (bank->Patch() == instrument + 1)
      entries.push_back({bank->BankName(), BankNumber({bank->BankMSB(), bank->BankLSB()})});
  return entries;
}

std::vector<ComboEntry> TrackEntries(const Tracks& tracks, TrackFormat format,
                                     const std::function<bool(const Track&)>& wanted) {
  std::vector<ComboEntry> entries;
  if (format.first != nullptr) entries.push_back({QString::fromUtf16(format.first), kAllTracks});
  for (const auto& track : tracks) {
    if (wanted && !wanted(*track)) continue;
    const QString number = format.between != nullptr
                               ? QString::number(track->TrackNumber()) + QString::fromUtf16(format.between)
                               : QString();
    entries.push_back({number + track->Description(), track->TrackNumber()});
  }
  return entries;
}

}  // namespace zelmar
