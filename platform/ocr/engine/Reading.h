#pragma once

namespace mirvak {

enum class Reading {
    ok,
    noPicture, ///< the file is missing or no picture
    noModel,   ///< no model could be loaded
    noText,    ///< nothing in the picture can be read
    late,      ///< no part was read in time, or the reading was stopped
};

} // namespace mirvak
