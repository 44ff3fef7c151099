#pragma once

#include "OutlineScenes.h"

#include <cstdio>
#include <functional>
#include <optional>

const cv::Size learningFrame(1280, 960);
using UseScene = std::function<void(const cv::Mat& picture, const std::optional<Corners>& sheet)>;

/// What is learnt from: of a seed one scene on each kind of desk of both kinds of drawing, with every second
/// seed the empty desks too.
void forScenesOf(unsigned seed, const UseScene& use);

/// The main of a program that writes examples: PROGRAM FILE [SCENES [SEED [OPTION]]].
/// @param use  makes what writes the scenes to the file; `hasOption`: whether there is a last word
/// @param scenes  those of one seed
/// @return the program's exit code
int writeExamples(int argc,
                  char** argv,
                  const char* usage,
                  const std::function<UseScene(std::FILE* file, bool hasOption)>& use,
                  const std::function<void(unsigned seed, bool hasOption, const UseScene& use)>& scenes);
