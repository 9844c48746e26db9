#include "FakeCanberra.h"

#include <canberra.h>

#include <chrono>
#include <map>
#include <thread>

using fernhop::freedesktop::FakeCanberra;

struct ca_context {
    ca_finish_callback_t finished = nullptr;
    void *data = nullptr;
    std::thread player;
};

struct ca_proplist {
    std::map<std::string, std::string> values;
};

extern "C" {

FakeCanberra *fakeCanberra() {
    static FakeCanberra fake;
    return &fake;
}

int ca_context_create(ca_context **context) {
    while (fakeCanberra()->isBlocked)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    *context = new ca_context;
    ++fakeCanberra()->contexts;
    return CA_SUCCESS;
}

int ca_context_open(ca_context *) {
    return CA_SUCCESS;
}

int ca_context_destroy(ca_context *context) {
    if (context->player.joinable())
        context->player.join();
    if (context->finished)
        context->finished(context, 0, CA_ERROR_DESTROYED, context->data);
    delete context;
    --fakeCanberra()->contexts;
    return CA_SUCCESS;
}

int ca_proplist_create(ca_proplist **list) {
    *list = new ca_proplist;
    return CA_SUCCESS;
}

int ca_proplist_destroy(ca_proplist *list) {
    delete list;
    return CA_SUCCESS;
}

int ca_proplist_sets(ca_proplist *list, const char *key, const char *value) {
    list->values[key] = value;
    return CA_SUCCESS;
}

int ca_context_play_full(ca_context *context, uint32_t id, ca_proplist *list, ca_finish_callback_t finished,
                         void *data) {
    FakeCanberra &fake = *fakeCanberra();
    const std::string event = list->values[CA_PROP_EVENT_ID];
    {
        const std::lock_guard lock(fake.mutex);
        fake.events.push_back(event);
    }
    if (event == fake.missing)
        return CA_ERROR_NOTFOUND;
    if (fake.isEndless) {
        context->finished = finished;
        context->data = data;
        return CA_SUCCESS;
    }
    const int result = event == fake.failing ? CA_ERROR_CORRUPT : CA_SUCCESS;
    context->player = std::thread([=] { finished(context, id, result, data); });
    return CA_SUCCESS;
}

} // extern "C"
