// The path file: every setting that outlives a run, in four records of text.
//
// A record is a line of values between commas: texts between double quotation marks (one inside a text is
// doubled), whole numbers plain, dates, times and truth values between hash marks. The file is UTF-8.
#pragma once

#include <QString>

namespace zelmar {

// Name of the file in the application directory.
inline constexpr QLatin1String kPathFileName("frmPath.txt");

// Which window writes the file: each has its own labels for the records that people read.
enum class PathFileWriter { kMidiSetup, kCreateDatabase, kConnectDatabase, kMediaPlayer };

// Reads the file into the globals. Throws Failure, which names the file and what is wrong with it, when it is
// missing or record 1 or 2 cannot be read; the globals are then as they were. Records 3 and 4 that are
// missing or malformed leave their globals as they were and are no failure.
void ReadPathFileIntoGlobals(const QString& path);

// Empties the file and writes all records from the globals. Throws Failure when the file cannot be written;
// it then holds what it held, as far as the disk allows.
void WritePathFile(const QString& path, PathFileWriter writer);

}  // namespace zelmar
