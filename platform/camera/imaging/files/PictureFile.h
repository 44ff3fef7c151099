#pragma once

#include "Codec.h"

#include <functional>

namespace mirvak {

// The next state of a picture's file: `from` is read and stays, `to` is a new file in the format that the
// name `from` stands for, complete and synced, with the resolution of the old one. Reentrant.

/// The picture after `change`; nameTaken, ioError and badPicture as of writeImage(), badPicture also for what
/// cannot be read and for a change that answers false.
WriteResult
writeChanged(const std::string& from, const std::string& to, const std::function<bool(Image&)>& change);

/// Turned clockwise. The coded blocks of a JPEG are turned as they are where its sides allow.
WriteResult writeTurned(const std::string& from, const std::string& to, int quarters);

} // namespace mirvak
