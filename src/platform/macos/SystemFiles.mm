#include "platform/macos/SystemFiles.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/Reference.h"

namespace fernhop::macos {

namespace {

NSFileManager *manager() {
    return [NSFileManager defaultManager];
}

class SystemEnumerator : public DirectoryEnumerator {
  public:
    explicit SystemEnumerator(NSDirectoryEnumerator *shared) : enumerator(shared) {}

    std::optional<Url> next() override {
        @autoreleasepool {
            while (id item = [enumerator.get() nextObject])
                if ([item isKindOfClass:[NSURL class]])
                    if (auto url = fromNSURL(item))
                        return url;
            return std::nullopt;
        }
    }

    void skipDescendants() override { [enumerator.get() skipDescendants]; }

  private:
    Reference<NSDirectoryEnumerator> enumerator;
};

} // namespace

Url SystemFiles::homeDirectoryForCurrentUser() const {
    @autoreleasepool {
        return Url::fileUrl(fromNSString([[manager() homeDirectoryForCurrentUser] path]));
    }
}

bool SystemFiles::fileExistsAtPath(const std::string &path) const {
    // The system's functions would truncate the path there.
    if (path.find('\0') != std::string::npos)
        return false;
    @autoreleasepool {
        return [manager() fileExistsAtPath:toNSString(path)];
    }
}

std::unique_ptr<DirectoryEnumerator> SystemFiles::enumeratorAtUrl(const Url &folder) const {
    @autoreleasepool {
        NSArray *keys = [NSArray arrayWithObjects:NSURLIsDirectoryKey, NSURLIsPackageKey, nil];
        NSDirectoryEnumerator *enumerator = [manager() enumeratorAtURL:toNSURL(folder)
                                            includingPropertiesForKeys:keys
                                                               options:NSDirectoryEnumerationSkipsHiddenFiles
                                                          errorHandler:nil];
        return enumerator ? std::make_unique<SystemEnumerator>(enumerator) : nullptr;
    }
}

std::string SystemFiles::displayNameAtPath(const std::string &path) const {
    @autoreleasepool {
        return fromNSString([manager() displayNameAtPath:toNSString(path)]);
    }
}

} // namespace fernhop::macos
