// What is made of files once and shared by all that are made of the same ones.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "contentkey.h"
#include "contextmark.h"
#include "messages.h"

namespace sorvane {
// Base of what is shared. It ends with the last one that holds it, which needs a context current that it was made in.
class SharedContent {
private:
    template <class Content> friend class ContentCache;

    ContentKey key_;
    ContextMark mark_;
    std::vector<PrintedLine> lines_; // what making it said
};

// Finds what somebody holds. GUI thread only, with a context current.
template <class Content> class ContentCache {
public:
    // What was made of these in the current context or in one that shares with it; null when there is none. What its
    // making said is said again: a fault in a file is reported to everyone who uses the file.
    std::shared_ptr<Content> find(const ContentKey& key) const {
        for (const std::weak_ptr<Content>& entry : entries_) {
            std::shared_ptr<Content> content = entry.lock();
            if (content == nullptr || !(content->key_ == key) || !content->mark_.isInCurrentContext())
                continue;
            for (const PrintedLine& line : content->lines_)
                printLine(line);
            return content;
        }
        return nullptr;
    }

    // Shares from now on what was made of `key`, which must be from before its files were read.
    void add(const std::shared_ptr<Content>& content, ContentKey&& key, std::vector<PrintedLine>&& lines) {
        remove(nullptr);
        content->key_ = std::move(key);
        content->lines_ = std::move(lines);
        content->mark_.set();
        entries_.push_back(content);
    }

    // Shares it with nobody else.
    void remove(const std::shared_ptr<Content>& content) {
        std::erase_if(entries_, [&](const std::weak_ptr<Content>& entry) { return entry.lock() == content; });
    }

    // Shares nothing any more that is made of the file `path`.
    void forget(const std::string& path) {
        std::erase_if(entries_, [&](const std::weak_ptr<Content>& entry) {
            const std::shared_ptr<Content> content = entry.lock();
            return content == nullptr || content->key_.names(path);
        });
    }

private:
    std::vector<std::weak_ptr<Content>> entries_;
};
} // namespace sorvane
