#pragma once

#include <cstdint>
#include <span>

namespace tamvelo::contract {

/// An operation of the public class and the dialog that it opens, in the order of the type library.
struct Operation {
    const wchar_t* name;
    const wchar_t* form;
};
std::span<const Operation> Operations();

/// One bit for each of them.
using OperationSet = std::uint64_t;
constexpr OperationSet Bit(std::size_t operation) { return OperationSet{1} << operation; }

/// What the library can make of an answer.
enum class Answers : unsigned char { Nothing, Text, Boolean, Number, Object, Value };

/// What becomes of a dialog whose host lacks the member.
enum class Need : unsigned char {
    Always,   // it does not open, cannot be used or cannot be accepted
    Command,  // one of its commands cannot be carried out
    EitherOf, // the same, unless there is another of these members of the object
    Optional, // it does without
};

/// What a call does to the host.
enum class Effect : unsigned char { Reads, Moves, Writes };

/// A member of one of the host's objects, how the library calls it and in which operations.
struct Member {
    const wchar_t* object;    // by its role: "MyClase", "objClsEvents", "Recordset"
    const wchar_t* name;      // with "=" behind it the property is written
    const wchar_t* arguments; // "&Integer|Integer, Object[, String]": & by reference, [] may be left out
    Answers answers;
    Need need;
    Effect effect;
    OperationSet operations;
};

/// Every member that the library can call: the one list of them. The documentation, the tests' own host, what
/// the examples have and the demo's checker of hosts go by it. A member that is needed for different things
/// has a row for each.
std::span<const Member> Members();

} // namespace tamvelo::contract
