#include "documents/report/Page.h"

#include <QHashFunctions>

#include <deque>
#include <unordered_map>

namespace {

struct StyleHash {
    std::size_t operator()(const TextStyle& style) const {
        return qHashMulti(0, style.size, style.bold, style.italic, style.alignment.toInt(),
                          style.color.rgba(), style.pattern, style.mark);
    }
};

/// The layouts have a few dozen, plus one for each size that a text shrinks to.
std::deque<TextStyle>& allStyles() {
    static std::deque<TextStyle> all;
    return all;
}

} // namespace

SharedStyle::SharedStyle(const TextStyle& style) {
    static std::unordered_map<TextStyle, std::uint16_t, StyleHash> known;
    const auto [found, added] = known.try_emplace(style, std::uint16_t(allStyles().size()));
    if (added)
        allStyles().push_back(style);
    index = found->second;
}

const TextStyle& SharedStyle::operator*() const {
    return allStyles()[index];
}
