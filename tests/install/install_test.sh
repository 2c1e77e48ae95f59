#!/usr/bin/env bash
# install_test.sh <build directory> <project directory> <cmake> <C compiler> <C++ compiler>
# Programs in C and C++ find an installed library by pkg-config and by find_package, the library is
# wherever the prefix has been moved to, and the tool runs from there.
set -euo pipefail
build=$1 project=$2 cmake=$3 cc=$4 cxx=$5
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() {
    printf 'FAILED: %s\n' "$*"
    exit 1
}
command -v pkg-config >"$work/log" || fail "pkg-config is not installed"
unset DESTDIR

"$cmake" --install "$build" --prefix "$work/first" >"$work/log" || fail "$(<"$work/log")"
mv "$work/first" "$work/prefix"
prefix=$work/prefix
pc=$(find "$prefix" -name mmslib.pc)
libdir=$(dirname "$(dirname "$pc")")
export PKG_CONFIG_PATH=${pc%/*}

# The headers do not need their source tree, and nothing names the directories of the build.
! grep -rIl -e "$build" -e "$project" -e "$work" "$prefix" || fail "these files name directories"
for file in include/mmslib.h include/mmslib.hpp bin/mmspdu share/man/man1/mmspdu.1 \
    share/bash-completion/completions/mmspdu share/doc/mmslib/LICENSE; do
    [[ -f $prefix/$file ]] || fail "$file is not installed"
done

# run <program>: a C program reads a PDU; one in C++ writes a PDU and reads it.
run() {
    local program=$1 name printed libraries
    name=${program##*/}
    libraries=$(readelf -d "$program" | grep NEEDED)
    if [[ $name == *_cpp* ]]; then
        printed=$("$program" "$work/message.mms") || fail "$name: status $?"
        [[ $printed == *"text/plain, 12 octets" ]] || fail "$name: $printed"
    else
        printed=$("$program" "$project/samples/retrieve-conf-nested.mms") || fail "$name: status $?"
        [[ $printed == "application/smil, 319 octets"$'\n'* ]] || fail "$name: $printed"
        [[ $libraries != *c++* ]] || fail "$name needs a C++ runtime: $libraries"
    fi
    if [[ $name == *_static ]]; then
        [[ $libraries != *libmmslib* ]] || fail "$name uses the shared library"
    else
        [[ $libraries == *"[libmmslib.so.0]"* ]] || fail "$name does not use the shared library"
    fi
}

# --- by pkg-config ---------------------------------------------------------------------------------

version=$(pkg-config --modversion mmslib)
read -ra cflags <<<"$(pkg-config --cflags mmslib)"
read -ra libs <<<"$(pkg-config --libs mmslib)"
"$cc" "${cflags[@]}" "$project/examples/read.c" -o "$work/pc_c" "${libs[@]}" -Wl,-rpath,"$libdir"
"$cc" "${cflags[@]}" "$project/examples/read.c" -o "$work/pc_c_static" "$libdir/libmmslib.a"
"$cxx" -std=c++20 "${cflags[@]}" "$project/examples/message.cpp" -o "$work/pc_cpp" "${libs[@]}" \
    -Wl,-rpath,"$libdir"
"$cxx" -std=c++20 "${cflags[@]}" "$project/examples/message.cpp" -o "$work/pc_cpp_static" \
    "$libdir/libmmslib.a"
for program in pc_c pc_c_static pc_cpp pc_cpp_static; do
    run "$work/$program"
done

# --- by find_package: C alone, and beside C++, where the linker could become that of C++ --------------

# use_package <languages> <program>...: _c programs are read.c, _cpp programs message.cpp.
use_package() {
    local languages=$1 project_dir="$work/$1" program
    shift
    mkdir "$project_dir"
    cp "$project"/examples/{read.c,message.cpp} "$project_dir"
    cat >"$project_dir/CMakeLists.txt" <<CMAKE
cmake_minimum_required(VERSION 3.25)
project(client LANGUAGES $languages)
set(CMAKE_CXX_STANDARD 20)
add_link_options(LINKER:--no-as-needed) # a C++ runtime stays, even if nothing uses it
find_package(mmslib 99 QUIET)
if(mmslib_FOUND)
    message(FATAL_ERROR "version \${mmslib_VERSION} was taken for 99")
endif()
find_package(mmslib ${version%.*} REQUIRED)
foreach(program $*)
    if(program MATCHES "_cpp$")
        set(source message.cpp)
    else()
        set(source read.c)
    endif()
    add_executable(\${program} \${source})
    target_link_libraries(\${program} mmslib::mmslib)
    add_executable(\${program}_static \${source})
    target_link_libraries(\${program}_static mmslib::mmslib_static)
endforeach()
CMAKE
    { "$cmake" -S "$project_dir" -B "$project_dir/build" -DCMAKE_PREFIX_PATH="$prefix" \
        -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" --no-warn-unused-cli &&
        "$cmake" --build "$project_dir/build"; } >"$work/log" 2>&1 || fail "$(<"$work/log")"
    for program; do
        run "$project_dir/build/$program"
        run "$project_dir/build/${program}_static"
    done
}
use_package C cmake_c
use_package "C CXX" mixed_c mixed_cpp

# --- the tool ----------------------------------------------------------------------------------------

"$prefix/bin/mmspdu" --version | grep -qF "$version" || fail "mmspdu --version"
# shellcheck source=/dev/null
. "$prefix/share/bash-completion/completions/mmspdu"

# completions <word>...: what the last word can become.
completions() {
    COMP_WORDS=(mmspdu "$@") COMP_CWORD=$#
    _mmspdu
    printf '%s\n' "${COMPREPLY[@]}" | sort | paste -sd " "
}
[[ $(completions "") == "check recode show" ]] || fail "commands: $(completions "")"
[[ $(completions re) == "recode" ]] || fail "re: $(completions re)"
[[ $(completions check some-file "") == "" ]] || fail "check: $(completions check some-file "")"
for command in "" show recode check; do
    # shellcheck disable=SC2086
    expected=$("$prefix/bin/mmspdu" $command --help | grep -oE '^ +(-h,)?--[a-z]+' |
        grep -oE -- '--[a-z]+' | sort | paste -sd " ")
    # shellcheck disable=SC2086
    [[ $(completions $command --) == "$expected" ]] ||
        fail "options of mmspdu $command: $(completions $command --), but $expected"
done
printf 'Version %s is installed and used from C and C++.\n' "$version"
