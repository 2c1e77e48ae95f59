// The body: content type and data of a single part, or a WSP multipart body.
#include "codec/adapter.hpp"
#include "encoder/encoder.h"
#include "encoder/steps.hpp"

namespace mms {
namespace {

// The lengths of nested bodies, in the order in which a walk meets them. A nested body stands
// behind its own length; working that out anew at each level would double the work with every
// level, so the one size run over the outermost nested body records all lengths inside it, and the
// write run takes them from here.
class NestedLengths {
public:
    NestedLengths() = default;
    NestedLengths(const NestedLengths &) = delete;
    NestedLengths &operator=(const NestedLengths &) = delete;
    ~NestedLengths() { std::free(lengths_); }

    // Takes the next place; false without memory.
    bool reserve(size_t &place) {
        if (count_ == capacity_) {
            const size_t capacity = capacity_ != 0 ? capacity_ * 2 : 16;
            void *grown = std::realloc(lengths_, capacity * sizeof *lengths_);
            if (grown == nullptr) {
                return false;
            }
            lengths_ = static_cast<uint32_t *>(grown);
            capacity_ = capacity;
        }
        place = count_++;
        return true;
    }
    void set(size_t place, uint32_t length) { lengths_[place] = length; }
    // Every place that was reserved has been set by the time it is taken.
    uint32_t next() { return lengths_[next_++]; } // NOLINT(clang-analyzer-core.uninitialized*)

private:
    uint32_t *lengths_ = nullptr;
    size_t capacity_ = 0;
    size_t count_ = 0;
    size_t next_ = 0;
};

void write_parts(Writer &out, const MMS_Container &container, bool skip_first,
                 NestedLengths *lengths);

// The octets of a nested body, or 0 and why it cannot be written.
struct Size {
    MMS_Status status;
    uint32_t octets;
};

// Sizes a nested body, recording its length and those inside it when there is where to.
Size size_nested(const MMS_Container &parts, NestedLengths *lengths) {
    size_t place = 0;
    if (lengths != nullptr && !lengths->reserve(place)) {
        return {MMS_STATUS_NO_ROOM, 0};
    }
    Writer sizing;
    write_parts(sizing, parts, false, lengths);
    if (lengths != nullptr) {
        lengths->set(place, sizing.count());
    }
    return {sizing.status(), sizing.count()};
}

// A part that is multipart itself. A size run records lengths where it is given a place for them; a
// write run inside a nested body takes them from there; a write run outside makes them first.
void write_multipart_part(Writer &out, const MMS_Entity &entity, NestedLengths *lengths) {
    const MMS_Container *parts = nested_container(&entity);
    if (parts == nullptr) {
        out.fail(MMS_STATUS_MISSING);
        return;
    }
    if (!out.sizing() && lengths != nullptr) {
        write_entity_headers(out, entity, lengths->next(), false);
        write_parts(out, *parts, false, lengths);
        return;
    }
    NestedLengths made;
    const Size size = size_nested(*parts, out.sizing() ? lengths : &made);
    if (failed(size.status)) {
        out.fail(size.status);
    } else if (out.sizing()) {
        write_entity_headers(out, entity, size.octets, false);
        out.claim(size.octets);
    } else {
        write_multipart_part(out, entity, &made);
    }
}

void write_parts(Writer &out, const MMS_Container &container, bool skip_first,
                 NestedLengths *lengths) {
    const uint32_t entities = container.pEntityList->nElement;
    if (entities == 0 && !skip_first) {
        return;
    }
    const uint32_t skipped = skip_first && entities != 0 ? 1 : 0;
    write_uintvar(out, entities - skipped);
    auto entity = Entities(container.pEntityList).begin();
    for (uint32_t position = 0; position < entities && out.ok(); ++position, ++entity) {
        if (position < skipped) {
            continue;
        }
        if ((*entity)->isMultipart != 0) {
            write_multipart_part(out, **entity, lengths);
        } else {
            write_entity(out, **entity, false);
        }
    }
}

// The headers of a part but its content type.
void write_other_headers(Writer &out, const MMS_Entity &entity) {
    for (const MMS_Field *field : Fields(entity.pFieldList)) {
        if (id_of(field) != FieldId::content_type) {
            write_header(out, *field, Block::entity);
        }
    }
}

} // namespace

void write_multipart(Writer &out, const MMS_Container &container, bool skip_first) {
    write_parts(out, container, skip_first, nullptr);
}

void write_entity(Writer &out, const MMS_Entity &entity, bool top_level) {
    write_entity_headers(out, entity, MMS_GetContentLength(&entity), top_level);
    write_entity_body(out, entity);
}

void write_entity_headers(Writer &out, const MMS_Entity &entity, uint32_t data_length,
                          bool top_level) {
    const MMS_ContentType *content_type = MMS_GetContentType(&entity);
    if (content_type == nullptr) {
        out.fail(MMS_STATUS_MISSING);
        return;
    }
    if (top_level) {
        write_content_type(out, *content_type);
        return;
    }
    write_measured(out, write_uintvar, uintvar_size(data_length), [&](Writer &to) {
        write_uintvar(to, data_length);
        write_content_type(to, *content_type);
        write_other_headers(to, entity);
    });
}

void write_entity_body(Writer &out, const MMS_Entity &entity) {
    out.octets(entity.pContent, MMS_GetContentLength(&entity));
}

} // namespace mms

using mms::Writer;

uint32_t EncodeMultipart(const MMS_Container *pContainer, uint32_t skipFirst, uint8_t *pCursor,
                         uint32_t remaining, uint8_t sizeOnly, uint32_t *pWritten) {
    return mms::run_encoder(pCursor, remaining, sizeOnly, pWritten, [&](Writer &out) {
        mms::write_multipart(out, *pContainer, skipFirst != 0);
    });
}

uint32_t EncodeMultipartContents(const MMS_Container *pContainer, uint8_t *pCursor,
                                 uint32_t remaining, uint8_t sizeOnly, uint32_t *pWritten,
                                 uint8_t skipFirst) {
    return EncodeMultipart(pContainer, skipFirst, pCursor, remaining, sizeOnly, pWritten);
}

uint32_t EncodeEntity(const MMS_Entity *pEntity, uint8_t *pCursor, uint32_t remaining,
                      uint8_t sizeOnly, uint32_t *pWritten, uint8_t topLevel) {
    return mms::run_encoder(pCursor, remaining, sizeOnly, pWritten,
                            [&](Writer &out) { mms::write_entity(out, *pEntity, topLevel != 0); });
}

uint32_t EncodeEntityHeaders(const MMS_Entity *pEntity, uint8_t *pCursor, uint32_t remaining,
                             uint8_t sizeOnly, uint32_t dataLength, uint32_t *pWritten,
                             uint8_t topLevel) {
    return mms::run_encoder(pCursor, remaining, sizeOnly, pWritten, [&](Writer &out) {
        mms::write_entity_headers(out, *pEntity, dataLength, topLevel != 0);
    });
}

uint32_t EncodeEntityBody(const MMS_Entity *pEntity, uint8_t *pCursor, uint32_t remaining,
                          uint8_t sizeOnly, uint32_t *pWritten) {
    return mms::run_encoder(pCursor, remaining, sizeOnly, pWritten,
                            [&](Writer &out) { mms::write_entity_body(out, *pEntity); });
}
