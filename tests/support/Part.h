#pragma once

#include <QWidget>

#include <gtest/gtest.h>

/// The part of that name and kind; a failure where there is none.
template <class Part> Part* part(const QWidget& whole, const char* name)
{
    auto* found = whole.findChild<Part*>(QLatin1String(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
}
