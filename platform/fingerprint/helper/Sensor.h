#pragma once

#include "Messages.h"

#include <fprint.h>

#include <memory>

namespace mirvak::helper {

struct Unref
{
    void operator()(void* object) const { g_object_unref(object); }
};
template <class T> using Ref = std::unique_ptr<T, Unref>;

/// One capture with one sensor: open, wait for a finger, tell its picture, close. Everything happens on the
/// default event loop; the other end of the socket ends it at any moment.
class Sensor
{
public:
    explicit Sensor(int number);
    /// @return the exit status
    int run();

private:
    /// A driver's call that is under way, and how it ended.
    struct Call
    {
        Ref<GAsyncResult> result;
        static void done(GObject*, GAsyncResult* result, void* call);
        void wait();
    };

    static gboolean onHangUp(int, GIOCondition, void* self);
    bool open();
    Ref<FpImage> capture();
    void close();
    bool isWanted() const { return !g_cancellable_is_cancelled(wanted_.get()); }

    Ref<GCancellable> wanted_; ///< cancelled when the other end has closed
    Ref<FpContext> drivers_;
    Ref<FpDevice> device_;
    int number_;
};

} // namespace mirvak::helper
