#include "codec/codec.h"
#include "codec/values.hpp"

namespace mms {
namespace {

TextView skip_blanks(TextView text) {
    while (!text.empty() && is_blank(text.front())) {
        text = text.after(1);
    }
    return text;
}

TextView cut_blanks(TextView text) {
    while (!text.empty() && is_blank(text.data[text.size - 1])) {
        --text.size;
    }
    return text;
}

// The address behind the next "<", which a ">" or a space ends.
bool take_bracketed(TextView text, Address &address) {
    const size_t open = text.find('<');
    if (open == text.size) {
        return false;
    }
    const TextView inside = text.after(open + 1);
    const size_t close = inside.find('>', ' ');
    address.address = inside.first(close);
    return close != inside.size;
}

void replace(char **text, OwnedText replacement) {
    std::free(*text);
    *text = replacement.release();
}

} // namespace

bool split_address(TextView text, Address &address) {
    address = {};
    text = skip_blanks(text);
    if (text.find('<') == text.size) {
        address.address = text.first(text.find(' ', '\n'));
        return true;
    }
    if (text.front() == '<') {
        return take_bracketed(text, address);
    }
    TextView behind_name;
    if (text.front() == '"') {
        const TextView quoted = text.after(1);
        const size_t close = quoted.find('"');
        if (close == quoted.size) {
            return false;
        }
        address.display_name = quoted.first(close);
        behind_name = quoted.after(close);
    } else {
        address.display_name = cut_blanks(text.first(text.find('<', '\n')));
        behind_name = text;
    }
    address.has_display_name = true;
    return take_bracketed(behind_name, address);
}

} // namespace mms

uint32_t ParseNameAndAddress(const char *pText, char **ppDisplayName, char **ppAddress) {
    mms::Address split;
    const bool whole = mms::split_address(mms::view_of(pText), split);
    // The text may be one of those that are replaced, so both copies are taken first.
    mms::OwnedText name;
    mms::OwnedText address;
    if (split.has_display_name) {
        name = mms::copy_text(split.display_name);
    }
    if (whole) {
        address = mms::copy_text(split.address);
    }
    const bool copied = whole && address && (name || !split.has_display_name);
    if (name) {
        mms::replace(ppDisplayName, std::move(name));
    }
    if (copied) {
        mms::replace(ppAddress, std::move(address));
    }
    return copied ? 1 : 0;
}
