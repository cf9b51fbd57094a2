#include "Footprint.h"

#include <xcb/res.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

namespace {

template <class T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

int entries(const std::filesystem::path& folder) {
    return static_cast<int>(
        std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()));
}

long privateKilobytes(const std::filesystem::path& process) {
    std::ifstream stream(process / "smaps_rollup");
    for (std::string word; stream >> word;)
        if (word == "Private_Dirty:") {
            long number = 0;
            stream >> number;
            return number;
        }
    return 0;
}

unsigned resources(xcb_connection_t* x, std::uint32_t client) {
    const Reply<xcb_res_query_client_resources_reply_t> reply(
        xcb_res_query_client_resources_reply(x, xcb_res_query_client_resources(x, client), nullptr),
        &std::free);
    unsigned sum = 0;
    if (reply)
        for (auto types = xcb_res_query_client_resources_types_iterator(reply.get()); types.rem > 0;
             xcb_res_type_next(&types))
            sum += types.data->count;
    return sum;
}

unsigned resourcesOf(pid_t process, xcb_connection_t* x) {
    const xcb_res_client_id_spec_t anyClient{0, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const Reply<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(x, xcb_res_query_client_ids(x, 1, &anyClient), nullptr), &std::free);
    unsigned sum = 0;
    if (reply)
        for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0;
             xcb_res_client_id_value_next(&ids))
            if (xcb_res_client_id_value_value_length(ids.data) > 0 &&
                *xcb_res_client_id_value_value(ids.data) == static_cast<std::uint32_t>(process))
                sum += resources(x, ids.data->spec.client);
    return sum;
}

} // namespace

Footprint Footprint::of(pid_t process, const XServer& server) {
    const auto folder = std::filesystem::path("/proc") / std::to_string(process);
    return {entries(folder / "fd"), entries(folder / "task"), resourcesOf(process, server.raw()),
            ::privateKilobytes(folder)};
}
