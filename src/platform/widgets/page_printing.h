// Pages that paint themselves, on paper and in PDF files.
#pragma once

#include <QPageLayout>
#include <QString>

class QPrinter;

namespace zelmar {

class PrintedPages;

// The paper that is usual where the person lives, upright, with the margins of every printed page.
QPageLayout UsualPaper();

// Prints the pages, those alone that the printer is told to. Throws Failure when the printer or its file does
// not take them.
void PrintPagesOn(PrintedPages& pages, QPrinter& printer);

// Writes all pages into a PDF file on the usual paper. The file is whole or stays as it was. Throws Failure
// when it cannot be written.
void WritePdf(PrintedPages& pages, const QString& path);

}  // namespace zelmar
