// SPDX-License-Identifier: MIT
// The tool's verbs: a function each, which returns the exit code.
#pragma once

struct Settings;

namespace verbs {

int ports(const Settings &settings);
int status(const Settings &settings);
int send(const Settings &settings);
int inject(const Settings &settings);
int monitor(const Settings &settings);
int record(const Settings &settings);
int decode(const Settings &settings);
int serve(const Settings &settings);
int check(const Settings &settings);
int campaign(const Settings &settings);

} // namespace verbs
