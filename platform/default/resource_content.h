/// @file
/// The content of a resource file in memory, and what of it was not written yet.
#pragma once

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace qxcms::detail {

/// Elements in their order of addition, found by their name and by their place. An element has a `name`,
/// which stays as it is, and stays where it is until it is removed.
template <class Element>
class NamedElements {
public:
    /// Null when there is none of that name.
    Element* find(std::string_view name) const {
        const auto found = byName.find(name);
        return found != byName.end() ? found->second : nullptr;
    }
    const std::vector<std::unique_ptr<Element>>& inOrder() const { return elements; }

    /// Takes an element whose name is not there yet. Without memory everything is as before.
    void append(std::unique_ptr<Element> element) {
        Element& added = *element;
        byName.emplace(added.name, &added);
        try {
            elements.push_back(std::move(element));
        } catch (...) {
            byName.erase(added.name);
            throw;
        }
    }

    void remove(const Element& element) {
        byName.erase(element.name);
        for (auto place = elements.begin(); place != elements.end(); ++place)
            if (place->get() == &element) {
                elements.erase(place);
                return;
            }
    }

private:
    std::vector<std::unique_ptr<Element>> elements;
    // The names are those of the elements.
    std::unordered_map<std::string_view, Element*> byName;
};

struct ResourceItem {
    std::string name;
    std::string value;
    std::string text;
    /// True when the file does not hold it like this.
    bool changed = false;
};

struct ResourceTopic {
    std::string name;
    std::string text;
    NamedElements<ResourceItem> items;
    /// True when the topic came from the file or was written to it.
    bool stored = false;
    /// True when it, or one of its items, is to be written.
    bool changed = false;
};

struct ResourceContent {
    NamedElements<ResourceTopic> topics;
    /// Topics of the file that are to be removed from it, before the others are written.
    std::set<std::string> removed;
    /// A value that every writing changes.
    std::string revision;
};

} // namespace qxcms::detail
