#pragma once

#include <QString>

/// What was read and what it took.
struct Answer
{
    QString text;
    double seconds = 0; ///< of a processor
    QString marked;     ///< words of the text that are highlighted
};

Answer readByLibrary(const QString& picture, const QString& document);
/// The plain command; what it once read of this picture is kept beside it.
Answer readByCommand(const QString& picture, const char* model);
/// The page as the library sees it when it begins to read: cut out, level, evenly lit.
void cleanPage(const QString& picture, const QString& cleaned);
