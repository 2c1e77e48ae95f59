// mmspdu: reads, encodes anew and checks MMS PDUs in files.
#include "check.hpp"
#include "diagnose.hpp"
#include "encode.hpp"
#include "pdu_file.hpp"
#include "show.hpp"
#include "text_output.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <new>
#include <span>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace {

using mmspdu::TextPrinter;

enum Exit : int {
    exit_well = 0,
    exit_faulty = 1,
    exit_trouble = 2,
};

constexpr const char *exit_statuses =
    "Exit status:\n"
    "  0  every PDU was understood, and could be encoded where that was asked for\n"
    "  1  a PDU was not, or not wholly, understood, lacks mandatory headers, or could not be "
    "encoded\n"
    "  2  wrong usage, or a file could not be read or written\n";

// How a run ended, and what is said about it on standard error, in lines.
struct Result {
    int status = exit_well;
    std::vector<std::string> complaints;

    void add(int worse, std::string complaint) {
        status = std::max(status, worse);
        complaints.push_back(std::move(complaint));
    }
};

// The file's name for the eyes of a person.
std::string shown_name(const std::string &file, const TextPrinter &printer) {
    return file == "-" ? "standard input" : printer.text(file);
}

// Reads the file and calls use(octets); a file that cannot be read is told in the result.
template <typename Use>
void with_file(const std::string &file, const std::string &name, Result &result, Use use) {
    std::vector<uint8_t> octets;
    try {
        octets = mmspdu::read_pdu_file(file);
    } catch (const std::system_error &error) {
        result.add(exit_trouble, name + ": " + error.code().message());
        return;
    } catch (const std::length_error &error) {
        result.add(exit_trouble, name + ": " + error.what());
        return;
    }
    use(octets);
}

// --- show ------------------------------------------------------------------------------------

struct ShowArguments {
    std::string file;
    mmspdu::ShowStyle style;
};

void add_show(CLI::App &app, ShowArguments &arguments) {
    CLI::App *show = app.add_subcommand("show", "Print the message in FILE");
    show->add_option("FILE", arguments.file, "File with one PDU, - for standard input")->required();
    show->add_option("--lines", arguments.style.lines, "Lines to print of each text")
        ->type_name("N")
        ->capture_default_str();
    show->footer(exit_statuses);
}

Result run_show(const ShowArguments &arguments, const TextPrinter &printer) {
    Result result;
    const std::string name = shown_name(arguments.file, printer);
    with_file(arguments.file, name, result, [&](const std::vector<uint8_t> &octets) {
        const mmspdu::DecodedPdu decoded = mmspdu::decode_pdu(octets);
        if (decoded.message) {
            mmspdu::show_message(std::cout, printer, *decoded.message, &decoded.present,
                                 arguments.style);
        }
        if (!decoded.fault.empty()) {
            std::cout << (decoded.message ? "\n" : "") << "Not understood: " << decoded.fault
                      << '\n';
            result.add(exit_faulty, name + ": not understood: " + decoded.fault);
        }
    });
    return result;
}

// --- recode ----------------------------------------------------------------------------------

struct RecodeArguments {
    std::string in;
    std::string out;
    bool validate = false;
};

void add_recode(CLI::App &app, RecodeArguments &arguments) {
    CLI::App *recode =
        app.add_subcommand("recode", "Decode the PDU in IN and write it to OUT, encoded anew");
    recode->add_option("IN", arguments.in, "File with one PDU, - for standard input")->required();
    recode->add_option("OUT", arguments.out, "File to write, - for standard output")->required();
    recode->add_flag("--validate", arguments.validate,
                     "Write nothing when a mandatory header of the message type is missing");
    recode->footer(exit_statuses);
}

// False when the file could not be written.
bool write_out(const std::string &file, std::span<const uint8_t> octets, const TextPrinter &printer,
               Result &result) {
    if (file == "-") {
        std::cout.write(reinterpret_cast<const char *>(octets.data()),
                        static_cast<std::streamsize>(octets.size()));
        return true;
    }
    try {
        mmspdu::write_pdu_file(file, octets);
        return true;
    } catch (const std::system_error &error) {
        result.add(exit_trouble, printer.text(file) + ": " + error.code().message());
        return false;
    }
}

void recode_octets(const RecodeArguments &arguments, const std::vector<uint8_t> &octets,
                   const TextPrinter &printer, Result &result) {
    const std::string name = shown_name(arguments.in, printer) + ": ";
    const mmspdu::DecodedPdu decoded = mmspdu::decode_pdu(octets);
    const std::string gap = decoded.fault.empty() ? "" : "not understood: " + decoded.fault;
    if (!decoded.message) {
        result.add(exit_faulty, name + gap + "; nothing is written");
        return;
    }
    const mmspdu::EncodedPdu encoded = mmspdu::encode_message(*decoded.message, arguments.validate);
    if (!encoded.fault.empty()) {
        result.add(exit_faulty,
                   name + "cannot be encoded: " + encoded.fault + (gap.empty() ? "" : "; " + gap));
    } else if (write_out(arguments.out, encoded.octets(), printer, result) && !gap.empty()) {
        result.add(exit_faulty, name + gap + "; what was understood is written");
    }
}

Result run_recode(const RecodeArguments &arguments, const TextPrinter &printer) {
    Result result;
    with_file(arguments.in, shown_name(arguments.in, printer), result,
              [&](const std::vector<uint8_t> &octets) {
                  recode_octets(arguments, octets, printer, result);
              });
    return result;
}

// --- check -----------------------------------------------------------------------------------

struct CheckArguments {
    std::vector<std::string> files;
};

void add_check(CLI::App &app, CheckArguments &arguments) {
    CLI::App *check =
        app.add_subcommand("check", "Tell whether PDUs are complete and what encoding them gives");
    check->add_option("FILE", arguments.files, "Files with one PDU each, - for standard input")
        ->required();
    check->footer(exit_statuses);
}

Result run_check(const CheckArguments &arguments, const TextPrinter &printer) {
    Result result;
    for (const std::string &file : arguments.files) {
        const std::string name = shown_name(file, printer);
        with_file(file, name, result, [&](const std::vector<uint8_t> &octets) {
            const mmspdu::CheckReport report = mmspdu::check_pdu(octets);
            std::cout << name << ": " << report.title << '\n' << report.text;
            if (!report.trouble.empty()) {
                result.add(exit_faulty, name + ": " + report.trouble);
            }
        });
    }
    return result;
}

// --- the command line ------------------------------------------------------------------------

// The arguments in the order that the parser wants, the last one first.
std::vector<std::string> arguments_of(int argc, char **argv) {
    std::vector<std::string> arguments;
    for (int i = argc - 1; i > 0; --i) {
        const std::string argument = argv[i];
        // The parser would take such a file name for a list.
        const bool bracketed = argument.starts_with('[') && argument.ends_with(']');
        arguments.push_back(bracketed ? "./" + argument : argument);
    }
    return arguments;
}

Result parse_and_run(int argc, char **argv, const TextPrinter &printer) {
    CLI::App app("Reads, encodes anew and checks Multimedia Messaging Service (MMS) PDUs.",
                 "mmspdu");
    app.set_version_flag("--version", "mmspdu " MMSPDU_VERSION, "Print the version and exit");
    app.footer(exit_statuses);
    app.require_subcommand(1);
    ShowArguments show_arguments;
    RecodeArguments recode_arguments;
    CheckArguments check_arguments;
    add_show(app, show_arguments);
    add_recode(app, recode_arguments);
    add_check(app, check_arguments);
    try {
        app.parse(arguments_of(argc, argv));
    } catch (const CLI::Success &wanted) {
        // --help and --version.
        return {app.exit(wanted), {}};
    } catch (const CLI::ParseError &error) {
        return {exit_trouble, {printer.text(error.what()) + " (try mmspdu --help)"}};
    }
    if (app.got_subcommand("recode")) {
        return run_recode(recode_arguments, printer);
    }
    return app.got_subcommand("check") ? run_check(check_arguments, printer)
                                       : run_show(show_arguments, printer);
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
        return {exit_trouble, {std::string("standard output: ") + std::strerror(errno)}};
    }
}

} // namespace

int main(int argc, char **argv) {
    try {
        std::ios::sync_with_stdio(false);
        // A complaint about standard output must not try standard output again.
        std::cerr.tie(nullptr);
        const Result result = run(argc, argv);
        for (const std::string &complaint : result.complaints) {
            std::cerr << "mmspdu: " << complaint << '\n';
        }
        return result.status;
    } catch (const std::bad_alloc &) {
        static_cast<void>(std::fputs("mmspdu: not enough memory\n", stderr));
    } catch (...) {
        static_cast<void>(std::fputs("mmspdu: internal error\n", stderr));
    }
    return exit_trouble;
}
