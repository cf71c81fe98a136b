// Makes the template database from the library's texts.
#pragma once

#include <QString>

namespace zelmar {

// Reads tables/*.csv and tunes/*.abc of `data_folder` and writes the database `output` under another name
// first, so that `output` is always whole: the one before or the new one. Throws TextError for a mistake in
// a text, Failure for all else.
void BuildTemplate(const QString& data_folder, const QString& output);

}  // namespace zelmar
