// Stands in for libcanberra: each sound that is asked for becomes a line in the file that FERNHOP_TEST_BEEPS
// names.

#include <canberra.h>
#include <stdio.h>
#include <stdlib.h>

static int placeholder;

int ca_context_create(ca_context **context) {
    *context = (ca_context *)&placeholder;
    return CA_SUCCESS;
}

int ca_context_open(ca_context *context) {
    (void)context;
    return CA_SUCCESS;
}

int ca_context_destroy(ca_context *context) {
    (void)context;
    return CA_SUCCESS;
}

int ca_proplist_create(ca_proplist **list) {
    *list = (ca_proplist *)&placeholder;
    return CA_SUCCESS;
}

int ca_proplist_destroy(ca_proplist *list) {
    (void)list;
    return CA_SUCCESS;
}

int ca_proplist_sets(ca_proplist *list, const char *key, const char *value) {
    (void)list;
    (void)key;
    (void)value;
    return CA_SUCCESS;
}

int ca_context_play_full(ca_context *context, uint32_t id, ca_proplist *list, ca_finish_callback_t finished,
                         void *data) {
    (void)list;
    FILE *file = fopen(getenv("FERNHOP_TEST_BEEPS"), "a");
    if (file) {
        fputs("beep\n", file);
        fclose(file);
    }
    finished(context, id, CA_SUCCESS, data);
    return CA_SUCCESS;
}
