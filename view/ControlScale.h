#pragma once

#include "mirvakcamera.h"

/// How the positions of a slider stand for the values of a control: step by step, or, for exposure times, in
/// steps of the same ratio, because their useful part is a small share of their range.
class ControlScale
{
public:
    explicit ControlScale(const MirvakControlInfo& info = {});

    int last() const { return last_; } ///< positions go from 0 to this
    int valueAt(int position) const;
    int positionOf(int value) const;

private:
    int minimum_, maximum_, step_;
    bool isByRatio_;
    int last_;
};
