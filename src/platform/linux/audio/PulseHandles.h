#pragma once

#include <pulse/context.h>
#include <pulse/operation.h>
#include <pulse/proplist.h>
#include <pulse/subscribe.h>

#include <memory>

namespace tavro {

struct PulseDeleter {
    void operator()(pa_context* context) const {
        pa_context_set_state_callback(context, nullptr, nullptr);
        pa_context_set_subscribe_callback(context, nullptr, nullptr);
        pa_context_disconnect(context);
        pa_context_unref(context);
    }
    void operator()(pa_operation* operation) const {
        if (pa_operation_get_state(operation) == PA_OPERATION_RUNNING)
            pa_operation_cancel(operation);
        pa_operation_unref(operation);
    }
    void operator()(pa_proplist* properties) const { pa_proplist_free(properties); }
};

/// A connection; destroying it ends it, and none of its callbacks runs any more.
using PulseContext = std::unique_ptr<pa_context, PulseDeleter>;
/// A request under way; destroying it before its end means that its callback does not run.
using PulseOperation = std::unique_ptr<pa_operation, PulseDeleter>;
using PulseProperties = std::unique_ptr<pa_proplist, PulseDeleter>;

} // namespace tavro
