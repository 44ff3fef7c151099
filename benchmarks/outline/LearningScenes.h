#pragma once

#include "OutlineScenes.h"

#include <cstdio>
#include <functional>
#include <optional>
#include <string>

const cv::Size learningFrame(1280, 960);
using UseScene = std::function<void(const cv::Mat& picture, const std::optional<Corners>& sheet)>;

/// What is learnt from: of a seed one scene on each kind of desk of both kinds of drawing, with every second
/// seed the empty desks too.
void forScenesOf(unsigned seed, const UseScene& use);
/// One of the map's scenes and one of a sheet that lies partly upon another, both as small as the map sees
/// them.
void forSmallScenesOf(unsigned seed, const UseScene& use);

/// The main of a program that writes examples: PROGRAM FILE [SCENES [SEED [OPTION]]]. With an option that
/// begins with `small` they are of small scenes.
/// @param use  makes what writes the scenes to the file; `option`: the last word, or empty
/// @param scenes  those of one seed that are not small
/// @return the program's exit code
int writeExamples(int argc,
                  char** argv,
                  const char* usage,
                  const std::function<UseScene(std::FILE* file, const std::string& option)>& use,
                  const std::function<void(unsigned seed, const UseScene& use)>& scenes);
