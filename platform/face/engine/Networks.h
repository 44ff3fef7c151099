#pragma once

#include "Weights.h"

#include <opencv2/dnn.hpp>

namespace face {

/// The three networks, put together from their weights; what does not fit throws BrokenWeights, or
/// cv::Exception when the network first runs. Inputs are 1 x 3 x rows x columns, red green blue.

/// Face boxes: a tiny form of YOLO 2 (Redmon and Farhadi, "YOLO9000: Better, Faster, Stronger", 2017) with
/// separable convolutions. Any input size; 25 numbers for each cell of 32 x 32 pixels.
cv::dnn::Net detectorNet(const Weights& weights);

/// 68 points of a face of 112 x 112 pixels, by densely connected separable convolutions (after Huang and
/// others, "Densely Connected Convolutional Networks", 2017). 136 numbers: x and y as shares of the side.
cv::dnn::Net landmarkNet(const Weights& weights);

/// Describes a face of 112 x 112 pixels by 192 numbers: MobileFaceNet (Chen and others, "MobileFaceNets:
/// Efficient CNNs for Accurate Real-Time Face Verification on Mobile Devices", 2018), trained with an angular
/// margin (Deng and others, "ArcFace", 2019).
cv::dnn::Net recogniserNet(const Weights& weights);

} // namespace face
