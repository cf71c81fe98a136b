// The order in which people look up titles and names. It only orders: what is equal is up to the columns.
//
// Case and accents count for nothing and a number counts by its value ("Étude 9" stands between "ETUDE 2" and
// "Etude 10"); texts that are the same but for these stand by their bytes, so that no two different texts
// ever tie.
#pragma once

#include <string_view>

class QSqlDatabase;

namespace zelmar {

// The name by which statements ask for it.
inline constexpr char16_t kPeopleCollation[] = u"PEOPLE";

// Below, equal to or above 0, as `first` stands before, at or behind `second`. Both are UTF-8; bytes that are
// not stand behind all letters.
int CompareAsPeopleDo(std::string_view first, std::string_view second);

// Makes the collation known to the engine for statements of this open connection.
void AddPeopleCollation(const QSqlDatabase& database);

}  // namespace zelmar
