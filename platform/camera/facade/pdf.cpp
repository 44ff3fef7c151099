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
    return mirvak::guarded("MirvakPDF_Save", [&] {
        if (pdfPath && *pdfPath)
            return resultOf(impl_->pdf.save(pdfPath));
        impl_->pdf = {};
        return int(MIRVAK_BAD_ARGUMENT);
    });
}
