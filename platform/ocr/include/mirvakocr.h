// The recognition library: reads the text in the picture of a page and writes it as a document.
//
// A MirvakOCR is made for one recognition or for several after each other: Init, then Discern with Save or
// GetWords as often as wanted, then Deinit. No call throws. Integer results are 0 for success and one of
// MirvakOCRResult otherwise; a failure prints one line on standard error. All texts are UTF-8.
//
// Threads. One object is used by one thread at a time, but for GetProgress, Stop and Deinit; different
// objects may work at the same time. A recognition takes one thread for a second or two and 100 to 200 MB: it
// belongs on a thread of its own.
#pragma once

#include <memory>
#include <string>
#include <vector>

#define MIRVAK_OCR_API __attribute__((visibility("default")))

enum MirvakOCRResult {
    MIRVAK_OCR_OK = 0,
    MIRVAK_OCR_NOT_READY = -1,    // Init has not succeeded, or there is no recognised text; from Init:
                                  // the recogniser's libraries cannot be loaded
    MIRVAK_OCR_BAD_ARGUMENT = -2, // a null or empty path
    MIRVAK_OCR_BAD_PICTURE = -3,  // the file is missing or no JPEG, PNG or BMP picture
    MIRVAK_OCR_NO_MODEL = -4,     // the model directory holds no language that can be used
    MIRVAK_OCR_IO_ERROR = -5,     // the document could not be written
    MIRVAK_OCR_NO_TEXT = -6,      // nothing in the picture can be read
    MIRVAK_OCR_NO_MEMORY = -7,
    MIRVAK_OCR_TIMEOUT = -8, // given up after 45 seconds of computing, or stopped by Stop or Deinit
    MIRVAK_OCR_EXISTS = -9,  // a file has the name; a new document never replaces one
};

/// A place in a picture as it is seen (turned as its file says), in pixels from its outer corner at the top
/// left: the centre of the first pixel is at (0.5, 0.5).
struct MirvakOCRPoint
{
    float x, y;
};

/// One recognised word, where it stands.
struct MirvakOCRWord
{
    std::string text; // UTF-8, as the document has it; never empty
    /// Around the word and as high as the print of its line. Clockwise from where the upper edge begins: the
    /// first two give the direction in which it is read, whichever way the page lies.
    MirvakOCRPoint corners[4]{};
    float confidence = 0;       // 0 to 100
    int block = 0;              // of the page, from 0, in reading order
    int line = 0;               // the same, counted over the whole page
    bool isSpaceBehind = false; // between it and the next word of its line; none beside ideographs
};

class MIRVAK_OCR_API MirvakOCR
{
public:
    MirvakOCR();
    ~MirvakOCR();
    MirvakOCR(const MirvakOCR&) = delete;
    MirvakOCR& operator=(const MirvakOCR&) = delete;

    /// Takes the models from a directory: Tesseract data for its LSTM recogniser, one LANGUAGE.traineddata
    /// per language. The first Init of a process loads the recogniser's libraries. Each page is read in the
    /// language that fits it; words in the others are found too. The models themselves are loaded when a page
    /// needs them. A second Init starts anew. MIRVAK_OCR_BAD_ARGUMENT, MIRVAK_OCR_NO_MODEL,
    /// MIRVAK_OCR_NOT_READY.
    int MirvakOCR_Init(const char* modelDirectory);
    /// Reads a JPEG, PNG or BMP file and keeps the text for Save. The page may lie on a dark ground, askew,
    /// on its side or head, in uneven light; it is straightened for reading, the file stays as it is. A
    /// failure leaves no text. MIRVAK_OCR_NOT_READY, MIRVAK_OCR_BAD_ARGUMENT, MIRVAK_OCR_BAD_PICTURE,
    /// MIRVAK_OCR_NO_MODEL (all files are broken), MIRVAK_OCR_NO_TEXT, MIRVAK_OCR_NO_MEMORY,
    /// MIRVAK_OCR_TIMEOUT (what was read until then is kept only when it is at least one block of text, and
    /// the result is MIRVAK_OCR_OK).
    int MirvakOCR_Discern(const char* imagePath);
    /// How far Discern has come, or came last: 0 to 100, never less than before within one call. On any
    /// thread. MIRVAK_OCR_NOT_READY: none has begun since Init.
    int MirvakOCR_GetProgress(int& percent) const;
    /// Ends a Discern that runs within a fraction of a second, with MIRVAK_OCR_TIMEOUT and without a text;
    /// one that begins later ends at once, until the next Init. A text that was read before stays. On any
    /// thread, without waiting.
    int MirvakOCR_Stop();
    /// Writes the text as a Rich Text Format document: paragraphs, headings, tables by tab stops, page size
    /// and margins as those of the picture. The file is a new one and appears under its name only when it is
    /// complete and synced. MIRVAK_OCR_NOT_READY, MIRVAK_OCR_BAD_ARGUMENT, MIRVAK_OCR_EXISTS,
    /// MIRVAK_OCR_IO_ERROR, MIRVAK_OCR_NO_MEMORY. The text stays, to be saved again.
    int MirvakOCR_Save(const char* rtfPath);
    /// Whether documents that are saved from now on highlight the words that the recogniser was not sure of;
    /// the text itself stays the same. On from the begin. MIRVAK_OCR_OK.
    int MirvakOCR_MarkUnsure(bool on);
    /// The words of the text in reading order, with the size in pixels of the picture as seen, in which they
    /// stand. The caller owns them. MIRVAK_OCR_NOT_READY, MIRVAK_OCR_NO_MEMORY: `words` is empty. The text
    /// stays.
    int MirvakOCR_GetWords(std::vector<MirvakOCRWord>& words, int& width, int& height) const;
    /// Frees the models and the text. Init makes the object usable again; the destructor does the same. May
    /// be called on another thread while Discern works: that is stopped within a fraction of a second, and
    /// Deinit returns after it.
    int MirvakOCR_Deinit();

    struct Impl;

private:
    std::unique_ptr<Impl> impl_;
};
