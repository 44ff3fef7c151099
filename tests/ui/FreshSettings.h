#pragma once

#include "ConfigSettings.h"

#include <gtest/gtest.h>

#include <QSettings>

/// Starts every test with an empty store.
class FreshSettings : public ::testing::Test
{
protected:
    FreshSettings() { settings.GetSettings()->clear(); }

    ConfigSettings settings;
};
