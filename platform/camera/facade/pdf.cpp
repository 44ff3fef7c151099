// Pictures collected as the pages of a PDF.
#include "Impl.h"
#include "imageCalls.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

int resultOf(mirvak::PdfPages::Result result)
{
    switch (result) {
    case mirvak::PdfPages::Result::ok:
        return MIRVAK_OK;
    case mirvak::PdfPages::Result::ioError:
        return MIRVAK_IO_ERROR;
    case mirvak::PdfPages::Result::nameTaken:
        return MIRVAK_EXISTS;
    case mirvak::PdfPages::Result::stopped:
        return MIRVAK_STOPPED;
    default:
        return MIRVAK_BAD_ARGUMENT;
    }
}

mirvak::PdfWord wordOf(const MirvakPdfWord& word)
{
    mirvak::PdfWord made;
    made.text = word.text;
    std::transform(std::begin(word.corners),
                   std::end(word.corners),
                   made.corners.begin(),
                   [](const MirvakPointF& corner) { return cv::Point2d(corner.x, corner.y); });
    made.line = word.line;
    made.isSpaceBehind = word.isSpaceBehind;
    return made;
}

mirvak::PdfOptions optionsOf(const MirvakPdfOptions& options)
{
    mirvak::PdfOptions made;
    made.sheet =
        options.sheet == MIRVAK_PDF_LYING_A4 ? mirvak::PdfSheetKind::lyingA4 : mirvak::PdfSheetKind::ownSize;
    made.isArchival = options.isArchival;
    made.title = options.title;
    return made;
}

} // namespace

int MirvakCamera::MirvakPDF_AddPage(const char* imagePath)
{
    return mirvak::guarded("MirvakPDF_AddPage", [&] {
        return imagePath && *imagePath ? resultOf(impl_->pdf.add(imagePath)) : int(MIRVAK_BAD_ARGUMENT);
    });
}

int MirvakCamera::MirvakPDF_SetWords(const std::vector<MirvakPdfWord>& words)
{
    return mirvak::guarded("MirvakPDF_SetWords", [&] {
        mirvak::PdfWords made;
        made.reserve(words.size());
        std::transform(words.begin(), words.end(), std::back_inserter(made), wordOf);
        return resultOf(impl_->pdf.setWords(std::move(made)));
    });
}

int MirvakCamera::MirvakPDF_Save(const char* pdfPath)
{
    return MirvakPDF_SaveWatched(pdfPath, nullptr, nullptr);
}

int MirvakCamera::MirvakPDF_SaveWatched(const char* pdfPath, MirvakProgressCallback progress, void* context)
{
    return MirvakPDF_SaveAs(pdfPath, {}, progress, context);
}

int MirvakCamera::MirvakPDF_SaveAs(const char* pdfPath,
                                   const MirvakPdfOptions& options,
                                   MirvakProgressCallback progress,
                                   void* context)
{
    return mirvak::guarded("MirvakPDF_Save", [&] {
        const auto goesOn = [&](int done, int count) {
            return !progress || progress(done, count, context) == 0;
        };
        if (pdfPath && *pdfPath)
            return resultOf(impl_->pdf.save(pdfPath, optionsOf(options), goesOn));
        impl_->pdf = {};
        return int(MIRVAK_BAD_ARGUMENT);
    });
}
