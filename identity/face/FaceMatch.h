#pragma once

#include <QString>

/// What the face library says about pictures in files. It has been started; calls of one thread.
namespace FaceMatch {

constexpr int samePerson = 50;     ///< the lowest score of a match
constexpr int infraredIsSure = 20; ///< the lowest score with which the infrared picture has the last word
constexpr int living = 50;         ///< the lowest score of a living face
constexpr int surelyLiving = 101;

/// How alike the faces of two pictures are: 0 to 100. Where a step fails, what it says, which is never as
/// much as samePerson.
int matchingface(const QString& a, const QString& b);

/// Whether the one face of a picture is a living one: surelyLiving, or the library's score. -1 where the
/// library cannot tell, -4 for no face or several, another failure's own number. Says on standard output what
/// it found.
int liveface(const QString& path);

} // namespace FaceMatch
