#include "documents/report/Page.h"

#include <QHashFunctions>

#include <unordered_set>

namespace {

struct StyleHash {
    std::size_t operator()(const TextStyle& style) const {
        return qHashMulti(0, style.size, style.bold, style.italic, style.alignment.toInt(),
                          style.color.rgba(), style.pattern, style.mark);
    }
};

} // namespace

SharedStyle::SharedStyle(const TextStyle& style) {
    static std::unordered_set<TextStyle, StyleHash> all; // whose places stay; the layouts have some dozens
    shared = &*all.insert(style).first;
}
