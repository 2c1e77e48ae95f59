#include "check.hpp"

#include "diagnose.hpp"
#include "difference.hpp"
#include "encode.hpp"
#include "names.hpp"
#include "wording.hpp"

namespace mmspdu {
namespace {

std::string type_title(const MMSLib_Message *message) {
    const uint8_t type = message != nullptr ? MMSLib_GetXMmsMessageType(message->pContainer) : 0;
    const char *name = value_name(X_MMS_MESSAGE_TYPE_FIELD_NAME, type);
    return name != nullptr ? name : "no message type";
}

void add_line(CheckReport &report, const char *title, const std::string &text) {
    report.text += std::string("    ") + title + ": " + text + "\n";
}

void add_encoding(CheckReport &report, const PduView &pdu, const EncodedPdu &encoding) {
    const DecodedPdu decoded = decode_pdu(encoding.octets());
    const PduView encoded{encoding.octets(), decoded};
    const std::string difference = first_difference(pdu, encoded);
    if (difference.empty()) {
        add_line(report, "Encoding", "gives the same " + counted(pdu.octets.size(), "octet"));
    } else {
        add_line(report, "Encoding",
                 "gives " + counted(encoding.length, "octet") + ", the PDU has " +
                     std::to_string(pdu.octets.size()));
        add_line(report, "First difference", difference);
        const std::string reason = difference_reason(pdu, encoded);
        add_line(report, "Reason", reason.empty() ? "not determined" : reason);
    }
    add_line(report, "Message", message_change(pdu, encoded));
}

void check_mandatory_headers(CheckReport &report, const MMSLib_Message &message) {
    const std::string missing = missing_headers(message);
    add_line(report, "Mandatory headers", missing.empty() ? "all present" : "missing: " + missing);
    if (!missing.empty()) {
        append_phrase(report.trouble, "mandatory headers are missing: " + missing);
    }
}

void check_encoding(CheckReport &report, const PduView &pdu) {
    const EncodedPdu encoding = encode_message(*pdu.decoded.message, false);
    if (encoding.fault.empty()) {
        add_encoding(report, pdu, encoding);
        return;
    }
    add_line(report, "Encoding", "not possible: " + encoding.fault);
    append_phrase(report.trouble, "cannot be encoded: " + encoding.fault);
}

} // namespace

CheckReport check_pdu(std::span<const uint8_t> octets) {
    const DecodedPdu decoded = decode_pdu(octets);
    CheckReport report{type_title(decoded.message.get()), {}, {}};
    const bool whole = decoded.fault.empty();
    add_line(report, "Understood",
             whole ? "wholly" : (decoded.message ? "in part: " : "not at all: ") + decoded.fault);
    if (!whole) {
        report.trouble = "not understood: " + decoded.fault;
    }
    if (decoded.message) {
        check_mandatory_headers(report, *decoded.message);
        check_encoding(report, {octets, decoded});
    }
    return report;
}

} // namespace mmspdu
