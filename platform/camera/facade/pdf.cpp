// Pictures collected as the pages of a PDF.
#include "Impl.h"
#include "imageCalls.h"

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

} // namespace

int MirvakCamera::MirvakPDF_AddPage(const char* imagePath)
{
    return mirvak::guarded("MirvakPDF_AddPage", [&] {
        return imagePath && *imagePath ? resultOf(impl_->pdf.add(imagePath)) : int(MIRVAK_BAD_ARGUMENT);
    });
}

int MirvakCamera::MirvakPDF_Save(const char* pdfPath)
{
    return MirvakPDF_SaveWatched(pdfPath, nullptr, nullptr);
}

int MirvakCamera::MirvakPDF_SaveWatched(const char* pdfPath, MirvakProgressCallback progress, void* context)
{
    return mirvak::guarded("MirvakPDF_Save", [&] {
        const auto goesOn = [&](int done, int count) {
            return !progress || progress(done, count, context) == 0;
        };
        if (pdfPath && *pdfPath)
            return resultOf(impl_->pdf.save(pdfPath, goesOn));
        impl_->pdf = {};
        return int(MIRVAK_BAD_ARGUMENT);
    });
}
