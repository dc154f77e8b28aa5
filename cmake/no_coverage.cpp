// SPDX-License-Identifier: Apache-2.0
// What a place of the extension calls, when it is built with sanitizers, in a program that does not
// want to know which places it comes to.
extern "C" void __sanitizer_cov_trace_pc() {}
