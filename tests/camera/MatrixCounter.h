#pragma once

#include <opencv2/core.hpp>

#include <atomic>

/// Counts the pixel buffers that are allocated while it lives.
class MatrixCounter : public cv::MatAllocator
{
public:
    MatrixCounter() { cv::Mat::setDefaultAllocator(this); }
    ~MatrixCounter() override { cv::Mat::setDefaultAllocator(cv::Mat::getStdAllocator()); }
    MatrixCounter(const MatrixCounter&) = delete;
    MatrixCounter& operator=(const MatrixCounter&) = delete;

    int count() const { return count_; }

    cv::UMatData* allocate(int dimensions,
                           const int* sizes,
                           int type,
                           void* data,
                           size_t* step,
                           cv::AccessFlag flags,
                           cv::UMatUsageFlags usage) const override
    {
        ++count_;
        return cv::Mat::getStdAllocator()->allocate(dimensions, sizes, type, data, step, flags, usage);
    }
    bool allocate(cv::UMatData* data, cv::AccessFlag access, cv::UMatUsageFlags usage) const override
    {
        return cv::Mat::getStdAllocator()->allocate(data, access, usage);
    }
    void deallocate(cv::UMatData* data) const override { cv::Mat::getStdAllocator()->deallocate(data); }

private:
    mutable std::atomic<int> count_{0};
};
