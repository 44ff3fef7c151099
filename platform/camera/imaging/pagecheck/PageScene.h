#pragma once

#include "LookMatch.h"
#include "PageLook.h"

#include <vector>

namespace mirvak {

/// Judges by colour what the changed blocks of a look show: something new, the bare desk, or a hand. Keeps
/// its buffers. One thread at a time.
class PageScene
{
public:
    struct Judgement
    {
        double newShare = 0; ///< of the picture: changed and neither desk nor the hand that alone changed it
        bool hand = false;   ///< reaches into the picture
    };
    /// Whether anything lies there, for a look with nothing to compare it with: something is to be seen, and
    /// not the same all over, as on bare cloth.
    bool showsSomething(const PageLook& look);
    /// `match` compares `now` with `page`, the look that is remembered.
    Judgement judge(const PageLook& now, const PageLook& page, const LookMatch& match);

private:
    void takeGain(const PageLook& now, const PageLook& page, const LookMatch& match);
    void findDesk(const LookMatch& match, cv::Size grid);
    void takeOutside(cv::Size grid);
    bool touchesOther(int block, cv::Size grid) const;
    void findSkin(const PageLook& now);
    void dropThinSkin(cv::Size grid);
    void growFromSkin(cv::Size grid);

    /// One block: its colour, freed of the change of exposure and white balance, and what there is to see.
    struct Sight
    {
        cv::Vec3f tone; ///< logarithm of the channels
        float energy = 0;
    };
    static bool sameSight(const Sight& a, const Sight& b);
    bool isOneMaterial();

    std::vector<Sight> now_, page_;
    std::vector<unsigned char> other_; ///< blocks with another content or colour than on the page
    std::vector<unsigned char> desk_, skin_, wide_;
    std::vector<unsigned char> reach_; ///< a hand and all that hangs together with it
    std::vector<size_t> outside_;      ///< blocks that show what the desk looks like
    std::vector<size_t> queue_;
    std::vector<float> values_;
};

} // namespace mirvak
