#pragma once

#include "ConfigSettings.h"

#include <gtest/gtest.h>

#include <QSettings>

/// Starts every test with an empty store and leaves an empty one.
class FreshSettings : public ::testing::Test
{
protected:
    FreshSettings() { settings.GetSettings()->clear(); }
    ~FreshSettings() override { settings.GetSettings()->clear(); }

    ConfigSettings settings;
};
