// The encoder's steps on Writer.
#pragma once

#include "codec/values.hpp"

namespace mms {

// Where a header stands: among the MMS headers or among those of a part.
enum class Block : uint8_t { mms, entity };

// The PDU; `validate` asks for the mandatory headers of its type.
void write_message(Writer &out, const MMS_Container &container, bool validate);

void write_mms_headers(Writer &out, const MMS_Container &container, bool validate);
void write_header(Writer &out, const MMS_Field &field, Block block);
void write_group(Writer &out, uint8_t header_code, const MMS_Group &group);

// The entities of a container as parts, the first one left aside or not.
void write_multipart(Writer &out, const MMS_Container &container, bool skip_first);
void write_entity(Writer &out, const MMS_Entity &entity, bool top_level);
void write_entity_headers(Writer &out, const MMS_Entity &entity, uint32_t data_length,
                          bool top_level);
void write_entity_body(Writer &out, const MMS_Entity &entity);

} // namespace mms
