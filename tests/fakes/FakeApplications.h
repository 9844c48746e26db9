#pragma once

#include "platform/Bundle.h"
#include "platform/FileManager.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace fernhop::fakes {

/// A disk in memory with folders, files and application bundles: file manager and bundles for one set of
/// paths. `install` and `remove` change it.
class FakeApplications : public FileManager, public Bundles {
  public:
    struct Contents {
        std::optional<std::string> bundleIdentifier;
        PropertyDictionary info;
    };

    std::string home = "/Users/ada";
    std::optional<std::string> mainIdentifier = "org.fernhop.Fernhop";
    std::string resources = "/Applications/Fernhop.app/Contents/Resources"; ///< of Fernhop itself
    std::set<std::string> unreadableFolders;
    mutable int scans = 0; ///< number of enumerators made

    /// Adds a bundle at `path`, with the folders above it. A bundle is a folder, so paths inside it can be
    /// added.
    void install(const std::string &path, Contents contents) {
        addPath(path);
        contentsAt.insert_or_assign(path, std::move(contents));
    }

    /// Adds an ordinary application with an identifier, a display name and declared schemes.
    void installApplication(const std::string &path, const std::string &identifier, const std::string &name,
                            const std::vector<std::string> &schemes = {}) {
        PropertyArray list;
        for (const auto &scheme : schemes)
            list.push_back({scheme});
        PropertyDictionary info{{"CFBundleDisplayName", {name}}};
        if (!schemes.empty()) {
            const PropertyDictionary type{{"CFBundleURLSchemes", {list}}};
            info.insert_or_assign("CFBundleURLTypes", PropertyValue{PropertyArray{{type}}});
        }
        install(path, {identifier, std::move(info)});
    }

    /// Adds a plain file or folder.
    void addPath(const std::string &path) {
        for (auto slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1))
            addItem(path.substr(0, slash));
        addItem(path);
    }

    /// Removes the item at `path` and everything below it.
    void remove(const std::string &path) {
        const auto beneath = [&](const std::string &item) {
            return item == path || item.starts_with(path + "/");
        };
        std::erase_if(items, beneath);
        std::erase_if(contentsAt, [&](const auto &entry) { return beneath(entry.first); });
    }

    /// The bundle that the system would launch for an identifier: the first installed.
    std::optional<Url> urlOf(const std::string &identifier) const {
        for (const auto &item : items) {
            const auto found = contentsAt.find(item);
            if (found != contentsAt.end() && found->second.bundleIdentifier == identifier)
                return Url::fileUrl(item);
        }
        return std::nullopt;
    }

    Url homeDirectoryForCurrentUser() const override { return Url::fileUrl(home); }

    bool fileExistsAtPath(const std::string &path) const override {
        return std::find(items.begin(), items.end(), path) != items.end();
    }

    std::unique_ptr<DirectoryEnumerator> enumeratorAtUrl(const Url &folder) const override {
        ++scans;
        const std::string root = folder.path();
        if (!fileExistsAtPath(root) || unreadableFolders.contains(root))
            return nullptr;
        return std::make_unique<Enumerator>(itemsBeneath(root));
    }

    std::string displayNameAtPath(const std::string &path) const override {
        return path.substr(path.rfind('/') + 1);
    }

    std::unique_ptr<Bundle> bundleWithUrl(const Url &url) const override {
        const auto found = contentsAt.find(url.path());
        return found == contentsAt.end() ? nullptr : std::make_unique<FakeBundle>(found->second);
    }

    std::optional<std::string> mainBundleIdentifier() const override { return mainIdentifier; }

    std::optional<Url> urlForResource(std::string_view name, std::string_view extension) const override {
        const std::string path = resources + "/" + std::string(name) + "." + std::string(extension);
        return fileExistsAtPath(path) ? std::optional(Url::fileUrl(path)) : std::nullopt;
    }

  private:
    class FakeBundle : public Bundle {
      public:
        explicit FakeBundle(Contents bundleContents) : contents(std::move(bundleContents)) {}

        std::optional<std::string> bundleIdentifier() const override { return contents.bundleIdentifier; }

        std::optional<PropertyValue> objectForInfoDictionaryKey(std::string_view key) const override {
            const auto found = contents.info.find(key);
            return found == contents.info.end() ? std::nullopt : std::optional(found->second);
        }

      private:
        Contents contents;
    };

    class Enumerator : public DirectoryEnumerator {
      public:
        explicit Enumerator(std::vector<std::string> paths) : remaining(std::move(paths)) {}

        std::optional<Url> next() override {
            if (position == remaining.size())
                return std::nullopt;
            return Url::fileUrl(remaining[position++]);
        }

        void skipDescendants() override {
            if (position == 0)
                return;
            const std::string prefix = remaining[position - 1] + "/";
            while (position < remaining.size() && remaining[position].starts_with(prefix))
                ++position;
        }

      private:
        std::vector<std::string> remaining;
        std::size_t position = 0;
    };

    void addItem(const std::string &path) {
        if (!fileExistsAtPath(path))
            items.push_back(path);
    }

    /// Parents before children, siblings in the order of their addition, without hidden items.
    std::vector<std::string> itemsBeneath(const std::string &root) const {
        std::vector<std::string> found;
        for (const auto &item : items) {
            const auto slash = item.rfind('/');
            if (item.substr(0, slash) != root || item[slash + 1] == '.')
                continue;
            found.push_back(item);
            if (unreadableFolders.contains(item))
                continue;
            const auto children = itemsBeneath(item);
            found.insert(found.end(), children.begin(), children.end());
        }
        return found;
    }

    std::vector<std::string> items;
    std::map<std::string, Contents> contentsAt;
};

} // namespace fernhop::fakes
