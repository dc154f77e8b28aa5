// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/command_line/command.h"

namespace pelora::ctl {

std::span<const Option> ConnectionOptions() {
  static constexpr std::array kOptions = {
      Option{"--directory", "FILE", "Work on the directory in this file", &CommandLine::directory},
      Option{"--server", "[HOST]",
             "Work on the domain of this domain controller, with your Kerberos ticket;\n"
             "without a name, one of the servers of the ticket's domain",
             &CommandLine::server},
      Option{"--site", "NAME",
             "Find a server of this site of the ticket's domain first, in place of your own site's",
             &CommandLine::site},
      Option{"--sample", "", "Work on the sample company, which is made at first use",
             &CommandLine::sample},
  };
  return kOptions;
}

std::span<const Option> CommonOptions() {
  static constexpr std::array kOptions = {
      Option{"--json", "", "Print JSON, one object a line", &CommandLine::json},
      Option{"--quiet", "", "No progress and no closing summary", &CommandLine::quiet},
  };
  return kOptions;
}

std::span<const Option> WriteOptions() {
  static constexpr std::array kOptions = {
      Option{"--dry-run", "", "Print as LDIF what would be sent, and send nothing",
             &CommandLine::dry_run},
      Option{"--undo-file", "FILE", "Keep in this new file what takes the changes back",
             &CommandLine::undo_file},
      Option{"--report", "FILE", "Write the results into this file, as JSON lines",
             &CommandLine::report},
      Option{"--stop", "", "End at the first object that is not done", &CommandLine::stop},
  };
  return kOptions;
}

std::span<const Option> SelectionOptions() {
  static constexpr std::array kOptions = {
      Option{"--filter", "LDAPFILTER", "Objects that match this filter", &CommandLine::filter},
      Option{"--class", "CLASS", "Objects of this class", &CommandLine::class_name},
      Option{"--base", "DN", "Objects at and below this one", &CommandLine::base},
      Option{"--from", "FILE", "Objects named in this file, one a line (-: standard input)",
             &CommandLine::from},
  };
  return kOptions;
}

}  // namespace pelora::ctl
