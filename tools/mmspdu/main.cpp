// mmspdu: reads MMS PDUs in files.
#include "diagnose.hpp"
#include "pdu_file.hpp"
#include "show.hpp"
#include "text_output.hpp"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace {

using mmspdu::TextPrinter;

enum Exit : int {
    exit_understood = 0,
    exit_not_understood = 1,
    exit_trouble = 2,
};

constexpr const char *exit_statuses = "Exit status:\n"
                                      "  0  the whole PDU was understood\n"
                                      "  1  the PDU was not, or not wholly, understood\n"
                                      "  2  wrong usage, or a file could not be read or written\n";

// How a run ended, and what is said about it on standard error, in one line.
struct Result {
    int status;
    std::string complaint;
};

// The file's name for the eyes of a person.
std::string shown_name(const std::string &file, const TextPrinter &printer) {
    return file == "-" ? "standard input" : printer.text(file);
}

// --- show ------------------------------------------------------------------------------------

struct ShowArguments {
    std::string file;
    uint32_t lines = 8;
};

void add_show(CLI::App &app, ShowArguments &arguments) {
    CLI::App *show = app.add_subcommand("show", "Print the message in FILE");
    show->add_option("FILE", arguments.file, "File with one PDU, - for standard input")->required();
    show->add_option("--lines", arguments.lines, "Lines to print of each text")
        ->type_name("N")
        ->capture_default_str();
    show->footer(exit_statuses);
}

Result run_show(const ShowArguments &arguments, const TextPrinter &printer) {
    const std::string name = shown_name(arguments.file, printer);
    std::vector<uint8_t> octets;
    try {
        octets = mmspdu::read_pdu_file(arguments.file);
    } catch (const std::system_error &error) {
        return {exit_trouble, name + ": " + error.code().message()};
    } catch (const std::length_error &error) {
        return {exit_trouble, name + ": " + error.what()};
    }
    const mmspdu::DecodedPdu decoded = mmspdu::decode_pdu(octets);
    if (decoded.message) {
        mmspdu::show_message(std::cout, printer, decoded, arguments.lines);
    }
    if (decoded.fault.empty()) {
        return {exit_understood, {}};
    }
    std::cout << (decoded.message ? "\n" : "") << "Not understood: " << decoded.fault << '\n';
    return {exit_not_understood, name + ": not understood: " + decoded.fault};
}

// --- the command line ------------------------------------------------------------------------

Result parse_and_run(int argc, char **argv, const TextPrinter &printer) {
    CLI::App app("Reads Multimedia Messaging Service (MMS) PDUs.", "mmspdu");
    app.set_version_flag("--version", "mmspdu " MMSPDU_VERSION, "Print the version and exit");
    app.footer(exit_statuses);
    app.require_subcommand(1);
    ShowArguments show_arguments;
    add_show(app, show_arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success &wanted) {
        // --help and --version.
        return {app.exit(wanted), {}};
    } catch (const CLI::ParseError &error) {
        return {exit_trouble, printer.text(error.what()) + " (try mmspdu --help)"};
    }
    return run_show(show_arguments, printer);
}

// Output that did not arrive is worse than a PDU that was not understood.
Result run(int argc, char **argv) {
    // The first write that fails ends the run, with its reason in errno.
    std::cout.exceptions(std::ios::badbit | std::ios::failbit);
    try {
        Result result = parse_and_run(argc, argv, TextPrinter::for_environment());
        std::cout.flush();
        return result;
    } catch (const std::ios_base::failure &) {
        return {exit_trouble, std::string("standard output: ") + std::strerror(errno)};
    }
}

} // namespace

int main(int argc, char **argv) {
    try {
        std::ios::sync_with_stdio(false);
        // A complaint about standard output must not try standard output again.
        std::cerr.tie(nullptr);
        const Result result = run(argc, argv);
        if (!result.complaint.empty()) {
            std::cerr << "mmspdu: " << result.complaint << '\n';
        }
        return result.status;
    } catch (const std::bad_alloc &) {
        static_cast<void>(std::fputs("mmspdu: not enough memory\n", stderr));
    } catch (...) {
        static_cast<void>(std::fputs("mmspdu: internal error\n", stderr));
    }
    return exit_trouble;
}
