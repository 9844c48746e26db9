#include "main/MacApplication.h"

int main() {
    return fernhop::macos::runApplication();
}
