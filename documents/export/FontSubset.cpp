#include "documents/export/FontSubset.h"

#include "core/base/Fault.h"

#include <hb-subset.h>

#include <map>
#include <memory>

namespace {

/// Releases HarfBuzz's objects, which count their users.
template<auto release>
struct Release {
    template<typename Object>
    void operator()(Object* object) const {
        release(object);
    }
};
using Blob = std::unique_ptr<hb_blob_t, Release<hb_blob_destroy>>;
using Face = std::unique_ptr<hb_face_t, Release<hb_face_destroy>>;
using Input = std::unique_ptr<hb_subset_input_t, Release<hb_subset_input_destroy>>;

Blob blobOf(const QByteArray& bytes) {
    auto* const kept = new QByteArray(bytes); // NOLINT(cppcoreguidelines-owning-memory): the blob deletes it
    return Blob(hb_blob_create(kept->constData(), unsigned(kept->size()), HB_MEMORY_MODE_READONLY, kept,
                               [](void* bytesOfBlob) { delete static_cast<QByteArray*>(bytesOfBlob); }));
}

/// The tables of a font, each kept once it has been asked for: HarfBuzz still reads outlines after it has
/// given their table back.
struct Tables {
    const QRawFont& font;
    std::map<hb_tag_t, Blob> kept{};
};

/// A table of a QRawFont: Qt knows no file, but every table of it.
hb_blob_t* tableOf(hb_face_t* /*face*/, hb_tag_t tag, void* tables) {
    auto& all = *static_cast<Tables*>(tables);
    const auto [table, added] = all.kept.try_emplace(tag);
    if (added) {
        const char name[] = {char(tag >> 24), char(tag >> 16), char(tag >> 8), char(tag), 0};
        table->second = blobOf(all.font.fontTable(name));
    }
    return hb_blob_reference(table->second.get());
}

QByteArray bytesOf(const Blob& blob) {
    unsigned size = 0;
    const char* const data = hb_blob_get_data(blob.get(), &size);
    return {data, qsizetype(size)};
}

constexpr hb_tag_t outlinesOfPostScript = HB_TAG('C', 'F', 'F', ' ');

} // namespace

namespace FontSubsets {

bool hasOutlines(const QRawFont& font) {
    return !font.fontTable("glyf").isEmpty() || !font.fontTable("CFF ").isEmpty();
}

FontSubset subset(const QRawFont& font, const std::vector<quint32>& glyphs) {
    Tables tables{font};
    const Face whole(hb_face_create_for_tables(tableOf, &tables, nullptr));
    const Input wanted(hb_subset_input_create_or_fail());
    if (!wanted)
        throw Fault(Fault::OutOfMemory, "Out of memory");
    hb_set_t* const kept = hb_subset_input_glyph_set(wanted.get());
    for (const quint32 glyph : glyphs)
        hb_set_add(kept, glyph);
    hb_subset_input_set_flags(wanted.get(), HB_SUBSET_FLAGS_RETAIN_GIDS | HB_SUBSET_FLAGS_NO_HINTING |
                                                HB_SUBSET_FLAGS_NOTDEF_OUTLINE);
    hb_set_t* const dropped = hb_subset_input_set(wanted.get(), HB_SUBSET_SETS_DROP_TABLE_TAG);
    for (const hb_tag_t tag :
         {HB_TAG('c', 'm', 'a', 'p'), HB_TAG('G', 'S', 'U', 'B'), HB_TAG('G', 'P', 'O', 'S'),
          HB_TAG('G', 'D', 'E', 'F'), HB_TAG('n', 'a', 'm', 'e'), HB_TAG('O', 'S', '/', '2'),
          HB_TAG('p', 'o', 's', 't'), HB_TAG('k', 'e', 'r', 'n'), HB_TAG('F', 'F', 'T', 'M')})
        hb_set_add(dropped, tag);
    const Face part(hb_subset_or_fail(whole.get(), wanted.get()));
    if (!part)
        throw Fault(Fault::InternalError, "The font cannot be embedded: " + font.familyName().toStdString());
    const Blob outlines(hb_face_reference_table(part.get(), outlinesOfPostScript));
    if (hb_blob_get_length(outlines.get()) > 0)
        return {bytesOf(outlines), true};
    return {bytesOf(Blob(hb_face_reference_blob(part.get()))), false};
}

} // namespace FontSubsets
