#pragma once

#include "hidcard.h"
#include "idfacesdk.h"

#include <QColor>

#include <atomic>
#include <map>
#include <string>
#include <vector>

/// What the card and face calls of these tests answer, and what they were asked for.
struct Libraries
{
    int opens = HIDCARD_OK, cardType = 0;
    bool isReaderOpen = false; ///< the one of all its users
    std::string portraitPath;  ///< as it was told
    QColor portrait = Qt::red; ///< of the card; none when it is not valid
    bool isForeign = false;    ///< in the portrait's place lies a link to another file
    std::atomic<int> starts{ID_FACE_OK};
    std::atomic<bool> isFaceSeen{true}; ///< in the live picture
    int faces = 1, features = 0, score = 0, status = 1;
    bool throws = false;              ///< what is no std::exception, while faces are compared
    int width = 2;                    ///< px of the pictures that are read, half as high
    std::map<std::string, int> reads; ///< what a picture's reading says; 0 where none is named
    std::vector<int> lives;           ///< scores, one a question
    std::vector<std::string> asked;   ///< the pictures that were read, in full
    std::atomic<bool> isRunning{false};
    std::atomic<int> started{0}; ///< times, also in vain
};

/// The one of the test that runs.
extern Libraries* libraries;
