# What Objective-C++ needs: the target fernhop_apple gives the system's frameworks on a Mac, and elsewhere GNUstep's Foundation
# with a recording double of the rest, so that the application can be compiled, run and checked there. The sources are
# the same and count references by hand: GNUstep's runtime has no automatic counting.
enable_language(OBJCXX)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)

add_library(fernhop_apple INTERFACE)
target_compile_options(fernhop_apple INTERFACE $<$<COMPILE_LANGUAGE:OBJCXX>:-fblocks;-fno-objc-arc>)
if(APPLE)
    target_link_libraries(fernhop_apple INTERFACE "-framework AppKit" "-framework CoreServices" "-framework Foundation"
                                                  "-framework QuartzCore")
else()
    add_subdirectory(tests/macos/double)
    # Whole: nothing refers to its categories and to what the sanitizers look for.
    target_link_libraries(fernhop_apple INTERFACE $<LINK_LIBRARY:WHOLE_ARCHIVE,fernhop_macos_double>)
endif()
