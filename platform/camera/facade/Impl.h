#pragma once

#include "CameraManager.h"
#include "CodeReader.h"
#include "DeskConfig.h"
#include "ImagePool.h"
#include "KeyListener.h"
#include "PageCheck.h"
#include "PdfPages.h"
#include "ShotVerdict.h"
#include "mirvakcamera.h"

/// What one MirvakCamera owns. The pool is declared first: devices and images give their buffers back to it.
struct MirvakCamera::Impl
{
    mirvak::ImagePool pool;
    mirvak::PageCheck pageCheck;     ///< what MirvakImage_CheckPage remembers
    mirvak::ShotVerdict shotVerdict; ///< what MirvakImage_JudgePage remembers
    mirvak::PdfPages pdf;            ///< the pages that MirvakPDF_Save will write
    std::vector<mirvak::Code> codes; ///< what MirvakZBarcode_Discern found last
    std::optional<DeskConfig> desk;  ///< as read by the last MirvakDevs_Init
    mirvak::CameraManager cameras{pool};
    mirvak::KeyListener keys;
};
