// SPDX-License-Identifier: MIT
//
// Frames as consumers send them, and as they are answered, for a system of eight channels in which
// target 0 has source 2, and target 5 has sources 1 and 7 before the takes.

#ifndef TESTS_GATEWAY_EMBER_CONVERSATION_H_
#define TESTS_GATEWAY_EMBER_CONVERSATION_H_

namespace test {

// GetDirectory of the root, as two consumers ask.
inline constexpr char kRootAsked[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 0B 6B 09 A0 07 62 05 A0 03 02 01 20 B4 EC FF";
inline constexpr char kRootAskedWithMask[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 10 6B 0E A0 0C 62 0A A0 03 02 01 20 A1 03 02 01 FD DF 94 "
    "8F FF";
inline constexpr char kRootAnswered[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 33 6B 31 A0 2F 63 2D A0 03 02 01 01 A1 26 31 24 A0 09 0C "
    "07 74 65 73 6B 63 74 6C A1 17 0C 15 4F 72 76 6F 20 49 6E 74 65 72 63 6F 6D 20 43 6F 6E 74 "
    "72 6F 6C E6 A5 FF";

// GetDirectory of node 1, by its number.
inline constexpr char kNodeAsked[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 1D 6B 1B A0 19 63 17 A0 03 02 01 01 A2 10 64 0E A0 0C 62 "
    "0A A0 03 02 01 20 A1 03 02 01 FD DF 4E 7D FF";

// GetDirectory of the matrix, with empty connections beside the command; its answer.
inline constexpr char kMatrixAsked[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 22 6B 20 A0 1E 71 1C A0 04 0D 02 01 02 A2 10 64 0E A0 0C "
    "62 0A A0 03 02 01 20 A1 03 02 01 FD DF A5 02 30 00 D7 C6 FF";
inline constexpr char kMatrixAnswered[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 82 01 01 6B 81 FD DE A0 81 FD DB 71 81 FD D8 A0 04 0D 02 "
    "01 02 A1 53 31 51 A0 0D 0C 0B 63 72 6F 73 73 70 6F 69 6E 74 73 A1 0D 0C 0B 43 72 6F 73 73 "
    "70 6F 69 6E 74 73 A2 03 02 01 02 A3 03 02 01 00 A4 03 02 01 08 A5 03 02 01 08 A8 04 0D 02 "
    "01 04 AA 17 30 15 A0 13 72 11 A0 04 0D 02 01 03 A1 09 0C 07 50 72 69 6D 61 72 79 A2 02 64 "
    "00 A5 81 96 30 81 93 A0 11 70 0F A0 03 02 01 00 A1 03 0D 01 02 A2 03 02 01 00 A0 10 70 0E "
    "A0 03 02 01 01 A1 02 0D 00 A2 03 02 01 00 A0 10 70 0E A0 03 02 01 02 A1 02 0D 00 A2 03 02 "
    "01 00 A0 10 70 0E A0 03 02 01 03 A1 02 0D 00 A2 03 02 01 00 A0 10 70 0E A0 03 02 01 04 A1 "
    "02 0D 00 A2 03 02 01 00 A0 12 70 10 A0 03 02 01 05 A1 04 0D 02 01 07 A2 03 02 01 00 A0 10 "
    "70 0E A0 03 02 01 06 A1 02 0D 00 A2 03 02 01 00 A0 10 70 0E A0 03 02 01 07 A1 02 0D 00 A2 "
    "03 02 01 00 9D 67 FF";

// Target 5 is to have source 7 alone; the row when it is reported.
inline constexpr char kAbsolute[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 23 6B 21 A0 1F 71 1D A0 04 0D 02 01 02 A5 15 30 13 A0 11 "
    "70 0F A0 03 02 01 05 A1 03 0D 01 07 A2 03 02 01 00 AB 97 FF";
inline constexpr char kAbsoluteReported[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 28 6B 26 A0 24 71 22 A0 04 0D 02 01 02 A5 1A 30 18 A0 16 "
    "70 14 A0 03 02 01 05 A1 03 0D 01 07 A2 03 02 01 00 A3 03 02 01 01 61 0B FF";

// The same take with all that the consumer remembers of the matrix.
inline constexpr char kAbsoluteWithContents[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 7B 6B 79 A0 77 71 75 A0 04 0D 02 01 02 A1 52 31 50 A0 0D "
    "0C 0B 63 72 6F 73 73 70 6F 69 6E 74 73 A1 0D 0C 0B 43 72 6F 73 73 70 6F 69 6E 74 73 A2 03 "
    "02 01 02 A3 03 02 01 00 A4 03 02 01 08 A5 03 02 01 08 A8 03 02 01 01 AA 17 30 15 A0 13 72 "
    "11 A0 04 0D 02 01 03 A1 09 0C 07 50 72 69 6D 61 72 79 A2 02 64 00 A5 15 30 13 A0 11 70 0F "
    "A0 03 02 01 05 A1 03 0D 01 07 A2 03 02 01 00 93 93 FF";

// Target 5 is to have source 3, too; the row.
inline constexpr char kConnect[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 23 6B 21 A0 1F 71 1D A0 04 0D 02 01 02 A5 15 30 13 A0 11 "
    "70 0F A0 03 02 01 05 A1 03 0D 01 03 A2 03 02 01 01 8E 96 FF";
inline constexpr char kConnectReported[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 29 6B 27 A0 25 71 23 A0 04 0D 02 01 02 A5 1B 30 19 A0 17 "
    "70 15 A0 03 02 01 05 A1 04 0D 02 03 07 A2 03 02 01 00 A3 03 02 01 01 18 A7 FF";

// Target 5 is to lose source 7; the row.
inline constexpr char kDisconnect[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 23 6B 21 A0 1F 71 1D A0 04 0D 02 01 02 A5 15 30 13 A0 11 "
    "70 0F A0 03 02 01 05 A1 03 0D 01 07 A2 03 02 01 02 B9 B4 FF";
inline constexpr char kDisconnectReported[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 28 6B 26 A0 24 71 22 A0 04 0D 02 01 02 A5 1A 30 18 A0 16 "
    "70 14 A0 03 02 01 05 A1 03 0D 01 03 A2 03 02 01 00 A3 03 02 01 01 34 55 FF";

// Target 4 is to have source 4, which is inhibited; the refusal.
inline constexpr char kConnectInhibited[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 23 6B 21 A0 1F 71 1D A0 04 0D 02 01 02 A5 15 30 13 A0 11 "
    "70 0F A0 03 02 01 04 A1 03 0D 01 04 A2 03 02 01 01 CE DF FF";
inline constexpr char kConnectRefused[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 27 6B 25 A0 23 71 21 A0 04 0D 02 01 02 A5 19 30 17 A0 15 "
    "70 13 A0 03 02 01 04 A1 02 0D 00 A2 03 02 01 00 A3 03 02 01 03 77 C8 FF";

// The gain of source 3 described, set to -12, and told.
inline constexpr char kGainDescribed[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 34 6B 32 A0 30 69 2E A0 07 0D 05 01 04 02 03 01 A1 23 31 "
    "21 A0 06 0C 04 67 61 69 6E A2 03 02 01 DC A3 03 02 01 9C A4 03 02 01 1B A5 03 02 01 03 AD "
    "03 02 01 01 38 AC FF";
inline constexpr char kGainSet[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 1D 6B 1B A0 19 69 17 A0 07 0D 05 01 04 02 03 01 A1 0C 31 "
    "0A A2 03 02 01 F4 AD 03 02 01 01 0E E3 FF";
inline constexpr char kGainTold[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 18 6B 16 A0 14 69 12 A0 07 0D 05 01 04 02 03 01 A1 07 31 "
    "05 A2 03 02 01 F4 5E 95 FF";

// call(5, 7, true), with number 1, and its result.
inline constexpr char kCallInvoked[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 36 6B 34 A0 32 74 30 A0 05 0D 03 01 07 01 A2 27 64 25 A0 "
    "23 62 21 A0 03 02 01 21 A2 1A 76 18 A0 03 02 01 01 A1 11 30 0F A0 03 02 01 05 A0 03 02 01 "
    "07 A0 03 01 01 FD DF E2 AF FF";
inline constexpr char kCallAnswered[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 15 77 13 A0 03 02 01 01 A1 03 01 01 FD DF A2 07 30 05 A0 "
    "03 01 01 FD DF 93 D1 FF";

// Subscribe, with all that the consumer remembers of the matrix: not a take.
inline constexpr char kSubscribed[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 81 8C 6B 81 89 A0 81 86 71 81 83 A0 04 0D 02 01 02 A1 52 "
    "31 50 A0 0D 0C 0B 63 72 6F 73 73 70 6F 69 6E 74 73 A1 0D 0C 0B 43 72 6F 73 73 70 6F 69 6E "
    "74 73 A2 03 02 01 02 A3 03 02 01 00 A4 03 02 01 08 A5 03 02 01 08 A8 03 02 01 01 AA 17 30 "
    "15 A0 13 72 11 A0 04 0D 02 01 03 A1 09 0C 07 50 72 69 6D 61 72 79 A2 0B 64 09 A0 07 62 05 "
    "A0 03 02 01 1E A5 1A 30 18 A0 16 70 14 A0 03 02 01 05 A1 03 0D 01 07 A2 03 02 01 00 A3 03 "
    "02 01 01 72 40 FF";

// The function in the list of its node: an element with its context.
inline constexpr char kCallDescribed[] =
    "A0 63 74 61 A0 05 0D 03 01 07 01 A1 58 31 56 A0 06 0C 04 63 61 6C 6C A2 37 30 35 A0 11 75 "
    "0F A0 03 02 01 01 A1 08 0C 06 74 61 72 67 65 74 A0 11 75 0F A0 03 02 01 01 A1 08 0C 06 73 "
    "6F 75 72 63 65 A0 0D 75 0B A0 03 02 01 04 A1 04 0C 02 6F 6E A3 13 30 11 A0 0F 75 0D A0 03 "
    "02 01 04 A1 06 0C 04 64 6F 6E 65";

}  // namespace test

#endif  // TESTS_GATEWAY_EMBER_CONVERSATION_H_
