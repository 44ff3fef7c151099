#include "PdfDocument.h"

#include "AtomicFile.h"
#include "PdfPageSize.h"

#define POINTERHOLDER_TRANSITION 4 // the library's old smart pointer stays away
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>
#include <qpdf/QUtil.hh>

#include <array>
#include <stdexcept>

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

/// Places the picture's unit square, origin bottom left, upright on a page of width x height.
std::array<double, 6> placement(int orientation, double width, double height)
{
    switch (orientation) {
    case 2:
        return {-width, 0, 0, height, width, 0};
    case 3:
        return {-width, 0, 0, -height, width, height};
    case 4:
        return {width, 0, 0, -height, 0, height};
    case 5:
        return {0, -height, -width, 0, width, height};
    case 6:
        return {0, -height, width, 0, 0, height};
    case 7:
        return {0, height, width, 0, 0, 0};
    case 8:
        return {0, height, -width, 0, width, 0};
    default:
        return {width, 0, 0, height, 0, 0};
    }
}

PdfPageSize sheetOf(const PdfPicture& picture)
{
    const bool isLying = picture.orientation >= 5;
    return isLying ? pdfPageSize(picture.height, picture.width, picture.dpiDown, picture.dpi)
                   : pdfPageSize(picture.width, picture.height, picture.dpi, picture.dpiDown);
}

std::string drawing(const PdfPicture& picture, const PdfPageSize& sheet)
{
    std::string text;
    for (const double part : placement(picture.orientation, sheet.width, sheet.height))
        text += QUtil::double_to_string(part, 4) + ' ';
    return text + "cm /Picture Do\n";
}

Object page(QPDF& pdf, const PdfPage& page, const PdfPageSize& sheet, Target& target)
{
    Object pictures = Object::newDictionary();
    pictures.replaceKey("/Picture", image(pdf, page, target));
    Object resources = Object::newDictionary();
    resources.replaceKey("/XObject", pictures);
    Object dictionary = Object::newDictionary();
    dictionary.replaceKey("/Type", Object::newName("/Page"));
    dictionary.replaceKey(
        "/MediaBox",
        Object::newArray(
            {Object::newInteger(0), Object::newInteger(0), number(sheet.width), number(sheet.height)}));
    if (sheet.unit > 1)
        dictionary.replaceKey("/UserUnit", number(sheet.unit));
    dictionary.replaceKey("/Resources", resources);
    dictionary.replaceKey("/Contents", Object::newStream(&pdf, drawing(page.picture, sheet)));
    return pdf.makeIndirectObject(dictionary);
}

void describe(QPDF& pdf)
{
    Object about = Object::newDictionary();
    about.replaceKey("/Producer", Object::newUnicodeString("Lumro scanner"));
    const std::string now = QUtil::qpdf_time_to_pdf_time(QUtil::get_current_qpdf_time());
    about.replaceKey("/CreationDate", Object::newString(now));
    pdf.getTrailer().replaceKey("/Info", pdf.makeIndirectObject(about));
}

} // namespace

void writePdf(const std::vector<PdfPage>& pages, AtomicFile& out, const PdfWatch& goesOn)
{
    Target target{out, goesOn, static_cast<int>(pages.size())};
    QPDF pdf;
    pdf.emptyPDF();
    pdf.setSuppressWarnings(true);
    bool isLong = false;
    for (const PdfPage& next : pages) {
        const PdfPageSize sheet = sheetOf(next.picture);
        isLong = isLong || sheet.unit > 1;
        pdf.addPage(page(pdf, next, sheet, target), false);
    }
    describe(pdf);
    FileEnd end(out);
    QPDFWriter writer(pdf);
    writer.setOutputPipeline(&end);
    writer.setMinimumPDFVersion(isLong ? "1.6" : "1.5"); // 1.6 knows units of other sizes
    writer.setObjectStreamMode(qpdf_o_generate);
    writer.write();
    target.tell();
}

} // namespace mirvak
