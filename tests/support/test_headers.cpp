// SPDX-License-Identifier: MIT
//
// Nothing but the reason to precompile the headers that all tests begin with.
