#include "PdfDocument.h"

#include "AtomicFile.h"
#include "PdfArchive.h"
#include "PdfGlyphs.h"

#define POINTERHOLDER_TRANSITION 4 // the library's old smart pointer stays away
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>
#include <qpdf/QUtil.hh>

#include <stdexcept>
#include <utility>

namespace mirvak {

namespace {

using Object = QPDFObjectHandle;

/// The file that is being made, and who is told how far it has come.
struct Target
{
    const AtomicFile& file;
    const PdfWatch& goesOn;
    int pages;
    int done = 0;

    void tell() const
    {
        if (goesOn && !goesOn(done, pages))
            throw PdfStopped();
    }
};

/// Hands a page's picture over when it is written.
class PageStream : public Object::StreamDataProvider
{
public:
    PageStream(const PdfPage& page, Target& target) : page_(page), target_(target) {}

    void provideStreamData(const QPDFObjGen&, Pipeline* out) override
    {
        if (target_.file.failed())
            throw std::runtime_error("the disk refuses");
        target_.tell();
        PictureFile file = PictureFile::read(page_.path);
        if (file.state != page_.state)
            throw std::runtime_error(page_.path + ": has changed since it was added");
        const Bytes stream = page_.picture.stream(std::move(file.bytes));
        out->write(stream.data(),
                   stream.size()); // in one piece: the library keeps a copy of exactly its size
        out->finish();
        ++target_.done;
    }

private:
    const PdfPage& page_;
    Target& target_;
};

/// Collects the library's many small pieces. Must not throw, because the library ends it in a destructor; the
/// file remembers that it failed.
class FileEnd : public Pipeline
{
public:
    explicit FileEnd(AtomicFile& file) : Pipeline("file", nullptr), file_(file) { waiting_.reserve(room); }

    void write(const unsigned char* data, size_t size) override
    {
        if (waiting_.size() + size > room)
            flush();
        if (size > room)
            put(data, size);
        else
            waiting_.insert(waiting_.end(), data, data + size);
    }
    void finish() override { flush(); }

private:
    static constexpr size_t room = 64 * 1024;

    void flush()
    {
        put(waiting_.data(), waiting_.size());
        waiting_.clear();
    }
    void put(const unsigned char* data, size_t size) { file_.write(data, size); }

    AtomicFile& file_;
    Bytes waiting_;
};

Object number(double value)
{
    return Object::newReal(value, 4);
}

Object colourSpace(const PdfPicture& picture)
{
    if (!picture.palette.empty()) {
        const std::string colours(picture.palette.begin(), picture.palette.end());
        return Object::newArray({Object::newName("/Indexed"),
                                 Object::newName("/DeviceRGB"),
                                 Object::newInteger(static_cast<int>(colours.size() / 3) - 1),
                                 Object::newString(colours)});
    }
    const char* const names[] = {"/DeviceGray", "", "/DeviceRGB", "/DeviceCMYK"};
    return Object::newName(names[picture.samples - 1]);
}

void setCoding(Object& dictionary, const PdfPicture& picture)
{
    const bool isJpeg = picture.coding == PdfPicture::Coding::jpeg;
    dictionary.replaceKey("/Filter", Object::newName(isJpeg ? "/DCTDecode" : "/FlateDecode"));
    Object how = Object::newDictionary();
    if (picture.isPlainRgb)
        how.replaceKey("/ColorTransform", Object::newInteger(0));
    if (!isJpeg) {
        how.replaceKey("/Predictor", Object::newInteger(15)); // PNG's filters, each row with its own
        how.replaceKey("/Colors", Object::newInteger(picture.samples));
        how.replaceKey("/BitsPerComponent", Object::newInteger(picture.bits));
        how.replaceKey("/Columns", Object::newInteger(picture.width));
    }
    if (!how.getKeys().empty())
        dictionary.replaceKey("/DecodeParms", how);
}

Object image(QPDF& pdf, const PdfPage& page, Target& target)
{
    const PdfPicture& picture = page.picture;
    Object stream = Object::newStream(&pdf);
    stream.replaceStreamData(
        std::make_shared<PageStream>(page, target), Object::newNull(), Object::newNull());
    stream.setFilterOnWrite(false);
    Object dictionary = stream.getDict();
    dictionary.replaceKey("/Type", Object::newName("/XObject"));
    dictionary.replaceKey("/Subtype", Object::newName("/Image"));
    dictionary.replaceKey("/Width", Object::newInteger(picture.width));
    dictionary.replaceKey("/Height", Object::newInteger(picture.height));
    dictionary.replaceKey("/BitsPerComponent", Object::newInteger(picture.bits));
    dictionary.replaceKey("/ColorSpace", colourSpace(picture));
    if (picture.isInverted)
        dictionary.replaceKey("/Decode", Object::parse("[1 0 1 0 1 0 1 0]"));
    setCoding(dictionary, picture);
    return stream;
}

std::string drawing(const PdfPicture& picture, const PdfSheet& sheet)
{
    std::string text;
    for (const double part : sheet.placement(picture.orientation))
        text += QUtil::double_to_string(part, 4) + ' ';
    return text + "cm /Picture Do\n";
}

/// The picture, and above it the text: what reads the words then finds them whatever it does with pictures.
std::string contents(const PdfPage& page, const PdfSheet& sheet, PdfGlyphs& glyphs)
{
    const std::string picture = drawing(page.picture, sheet);
    const std::string text = invisibleText(page.words, glyphs, sheet.fromPicture(seenSize(page.picture)));
    return text.empty() ? picture : "q " + picture.substr(0, picture.size() - 1) + " Q\n" + text;
}

Object page(QPDF& pdf, const PdfPage& page, const PdfSheet& sheet, Target& target, PdfGlyphs& glyphs)
{
    Object pictures = Object::newDictionary();
    pictures.replaceKey("/Picture", image(pdf, page, target));
    Object resources = Object::newDictionary();
    resources.replaceKey("/XObject", pictures);
    Object dictionary = Object::newDictionary();
    dictionary.replaceKey("/Type", Object::newName("/Page"));
    dictionary.replaceKey("/MediaBox",
                          Object::newArray({Object::newInteger(0),
                                            Object::newInteger(0),
                                            number(sheet.size.width),
                                            number(sheet.size.height)}));
    if (sheet.size.unit > 1)
        dictionary.replaceKey("/UserUnit", number(sheet.size.unit));
    dictionary.replaceKey("/Resources", resources);
    dictionary.replaceKey("/Contents", Object::newStream(&pdf, contents(page, sheet, glyphs)));
    return pdf.makeIndirectObject(dictionary);
}

/// The font of the invisible text, known when all pages are: each page that has words gets it.
void addFont(QPDF& pdf, const std::vector<PdfPage>& pages, const PdfGlyphs& glyphs)
{
    if (glyphs.isEmpty())
        return;
    const Object font = glyphs.font(pdf);
    std::vector<Object> made = pdf.getAllPages();
    for (size_t i = 0; i < made.size(); ++i) {
        if (pages[i].words.empty())
            continue;
        Object fonts = Object::newDictionary();
        fonts.replaceKey("/Text", font);
        made[i].getKey("/Resources").replaceKey("/Font", fonts);
    }
}

PdfAbout describe(QPDF& pdf, const PdfOptions& options)
{
    const QUtil::QPDFTime now = QUtil::get_current_qpdf_time();
    const PdfAbout told{
        "Lumro scanner", options.title, QUtil::qpdf_time_to_pdf_time(now), QUtil::qpdf_time_to_iso8601(now)};
    Object about = Object::newDictionary();
    about.replaceKey("/Producer", Object::newUnicodeString(told.producer));
    about.replaceKey("/CreationDate", Object::newString(told.pdfTime));
    if (options.isArchival)
        about.replaceKey("/ModDate", Object::newString(told.pdfTime));
    if (!told.title.empty())
        about.replaceKey("/Title", Object::newUnicodeString(told.title));
    pdf.getTrailer().replaceKey("/Info", pdf.makeIndirectObject(about));
    return told;
}

/// An archived file says what its colours mean for one kind of them only.
void leaveInks(PdfPage& page)
{
    if (page.picture.samples == 4)
        page.picture = page.picture.inRgb(PictureFile::read(page.path).bytes);
}

} // namespace

void writePdf(std::vector<PdfPage> pages, const PdfOptions& options, AtomicFile& out, const PdfWatch& goesOn)
{
    Target target{out, goesOn, static_cast<int>(pages.size())};
    QPDF pdf;
    pdf.emptyPDF();
    pdf.setSuppressWarnings(true);
    PdfGlyphs glyphs;
    bool isLong = false;
    for (PdfPage& next : pages) {
        if (options.isArchival)
            leaveInks(next);
        const PdfSheet sheet = sheetFor(next.picture, options.sheet);
        isLong = isLong || sheet.size.unit > 1;
        pdf.addPage(page(pdf, next, sheet, target, glyphs), false);
    }
    addFont(pdf, pages, glyphs);
    const PdfAbout about = describe(pdf, options);
    if (options.isArchival)
        makeArchival(pdf, about);
    FileEnd end(out);
    QPDFWriter writer(pdf);
    writer.setOutputPipeline(&end);
    writer.setMinimumPDFVersion(isLong ? "1.6" : "1.5"); // 1.6 knows units of other sizes
    writer.setObjectStreamMode(qpdf_o_generate);
    writer.setNewlineBeforeEndstream(options.isArchival); // as archives want it
    writer.write();
    target.tell();
}

} // namespace mirvak
