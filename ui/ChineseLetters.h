#pragma once

#include <QFont>

/// Chinese and Japanese share most letters but not their forms; left to itself the toolkit takes the Japanese
/// ones on every desktop that is not Chinese.
namespace ChineseLetters {

/// `font`, and for what it lacks the usual families with the forms that are used in China. Where none of them
/// is installed, the toolkit's choice remains.
QFont in(const QFont& font);

} // namespace ChineseLetters
