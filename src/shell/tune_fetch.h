// Fetching a tune of the library by its CodeName: the database is connected, the tune loaded, and its
// progress told.
//
// Events are served meanwhile: the caller's window may be gone afterwards. What plays is the caller's to
// stop, and unsaved work the caller's to ask about (MayReplaceTune).
#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <memory>

namespace zelmar {

class Tune;

enum class Fetched {
  kLoaded,
  kNotInCatalogue,  // and nobody has been told
  kFailed,          // the person has been told why
};

// Called with 0 to 100 as the load goes on.
using FetchProgress = std::function<void(std::int16_t percent)>;

// Loads the tune into the main window, with the loader that the main window lends, and leaves `code_name`
// spelled as stored. Throws what TuneLoader::DoLoad throws.
Fetched FetchTune(QString& code_name, const FetchProgress& progress = {});

// Loads the tune for the caller alone; the main window holds none afterwards. `target` is null unless it went
// well.
Fetched FetchTuneInto(std::shared_ptr<Tune>& target, QString& code_name, const FetchProgress& progress = {});

// What is written beside a progress bar: "40% completed. ", with a word about the sorting where it begins.
QString ProgressWords(std::int16_t percent);

}  // namespace zelmar
