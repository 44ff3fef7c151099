#pragma once

#include <QString>

/// The burn-in test of a factory: one script for each camera but the one that is shown.
namespace factoryTest {

/// Where the scripts lie: a folder beside the program, with a slash at its end.
QString scriptFolder();

/// Starts `folder`cbx3000cN.sh detached, N being the camera's place in the list, in the list's order. A
/// script that is missing or does not start is passed over; what becomes of one nobody asks.
void run(const QString& folder, int cameras, int shownCamera);

} // namespace factoryTest
