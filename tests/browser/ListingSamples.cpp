#include "browser/ListingSamples.h"

namespace corvel {

namespace {

const std::vector<ListingSample> samples = {
    // Fields with single blanks, as servers list that print the date without padding.
    {"file", "-rw-r--r-- 1 bob staff 512 Jan 5 12:34 readme.txt",
     "2|-rw-r--r--|bob|staff|512|01/5 12:34|readme.txt"},
    {"link", "lrwxrwxrwx 1 u g 10 Jan 5 12:00 name -> /target",
     "1|lrwxrwxrwx|u|g|10|01/5 12:00|name -> /target"},
    {"parent", "drwxr-xr-x 2 root root 4096 Dec 31 23:59 ..", "0|drwxr-xr-x|root|root|4096|12/31 23:59|.."},
    {"the directory itself", "drwxr-xr-x 2 root root 4096 Dec 31 23:59 .", ""},
    {"month of another language", "-rw-r--r-- 1 u g 1 Mai 5 12:34 f", "2|-rw-r--r--|u|g|1|/5 12:34|f"},
    {"day before month", "-rw-r--r-- 1 u g 1 05 Jan 12:34 f", "2|-rw-r--r--|u|g|1|/Jan 12:34|f"},
    {"time with seconds and zone", "-rw-r--r-- 1 u g 1 2020-01-05 12:34:56.0 +0100 f",
     "2|-rw-r--r--|u|g|1|/12:34:56.0 +0100|f"},
    {"no number of links", "drwxr-xr-x user group 512 Jan 5 12:34 name", ""},

    // Columns padded as ls pads them.
    {"padded numbers", "drwxr-xr-x    2 0        0            4096 Jan 05 12:00 files",
     "0|drwxr-xr-x|0|0|4096|01/05 12:00|files"},
    {"padded day", "-rw-r--r-- 1 u g 1 Jan  5 12:34 f", "2|-rw-r--r--|u|g|1|01/ 5|12:34 f",
     "2|-rw-r--r--|u|g|1|01/5 12:34|f"},
    {"padded year", "-rw-r--r-- 1 u g 1 Nov 15  2019 f", "2|-rw-r--r--|u|g|1|11/15 |2019 f",
     "2|-rw-r--r--|u|g|1|11/15 2019|f"},
    {"padded day and year", "-rw-r--r-- 1 u g 1 Apr  1  2019 a  b", "2|-rw-r--r--|u|g|1|04/ 1| 2019 a  b",
     "2|-rw-r--r--|u|g|1|04/1 2019|a  b"},
    {"links padded on the right shift the owner away", "-rw-r--r-- 1  bob staff 512 Jan 5 12:34 f",
     "2|-rw-r--r--||bob|staff|/Jan 5|12:34 f"},
    {"tabs are no blanks", "-rw-r--r--\t1\tu\tg\t1\tJan\t5\t12:34\tf", ""},

    // One blank in front of every line.
    {"leading blank", " drwxr-xr-x   3 ftp      ftp          4096 Oct 10 10:10 incoming",
     "0|drwxr-xr-x|ftp|ftp|4096|10/10 10:10|incoming"},
    {"two leading blanks", "  drwxr-xr-x   3 ftp      ftp          4096 Oct 10 10:10 incoming", ""},
    {"leading blank before a reply line", " 211-status 1 a b 5 c d e f", ""},

    // Access texts of ten characters and what some systems put behind them.
    {"access list mark", "drwxr-xr-x+ 3 u g 4096 Jan 5 12:00 shared", ""},
    {"character device", "crw-rw-rw- 1 root root 1, 3 Jan 5 12:00 null",
     "0|crw-rw-rw-|root|root|1,|/Jan 5|12:00 null"},
    {"access in words", "[RWCEAFMS] 1 admin users 512 Jan 5 12:00 SYS",
     "0|[RWCEAFMS]|admin|users|512|01/5 12:00|SYS"},

    // Owners, groups and sizes.
    {"owner with a blank", "-rw-r--r-- 1 Domain Users staff 7 Jan 5 12:00 f",
     "2|-rw-r--r--|Domain|Users|staff|/Jan 5|12:00 f"},
    {"size beyond 64 bits", "-rw-r--r-- 1 u g 99999999999999999999999 Jan 5 12:00 big",
     "2|-rw-r--r--|u|g|99999999999999999999999|01/5 12:00|big"},
    {"size in words", "-rw-r--r-- 1 u g 1.5K Jan 5 12:00 f", ""},
    // Names.
    {"blanks inside", "-rw-r--r-- 1 u g 1 Jan 5 12:00 a  b   c", "2|-rw-r--r--|u|g|1|01/5 12:00|a  b   c"},
    {"blank in front", "-rw-r--r-- 1 u g 1 Jan 5 12:00  a", "2|-rw-r--r--|u|g|1|01/5 12:00| a"},
    {"blank at the end", "-rw-r--r-- 1 u g 1 Jan 5 12:00 a ", "2|-rw-r--r--|u|g|1|01/5 12:00|a "},
    {"looks like an entry", "-rw-r--r-- 1 u g 1 Jan 5 12:00 -rw-r--r-- 1 u g 1 Jan 5 12:00 f",
     "2|-rw-r--r--|u|g|1|01/5 12:00|-rw-r--r-- 1 u g 1 Jan 5 12:00 f"},
    {"lone line feed", "-rw-r--r-- 1 u g 1 Jan 5 12:00 a\nb", "2|-rw-r--r--|u|g|1|01/5 12:00|a\nb"},
    {"escape sequence", "-rw-r--r-- 1 u g 1 Jan 5 12:00 \x1b[31mred",
     "2|-rw-r--r--|u|g|1|01/5 12:00|\x1b[31mred"},
    {"UTF-8", "-rw-r--r-- 1 u g 1 Jan 5 12:00 \xC3\xA9t\xC3\xA9 \xE2\x82\xAC",
     "2|-rw-r--r--|u|g|1|01/5 12:00|\xC3\xA9t\xC3\xA9 \xE2\x82\xAC"},
    {"one byte a letter", "-rw-r--r-- 1 u g 1 Jan 5 12:00 \xE9t\xE9 \x80",
     "2|-rw-r--r--|u|g|1|01/5 12:00|\xE9t\xE9 \x80"},
    {"no name", "-rw-r--r-- 1 u g 1 Jan 5 12:00 ", ""},

    // Lines that are no entries, and some that look enough like one.
    {"total", "total 1234", ""},
    {"other system's listing", "01-05-20  12:34PM       <DIR>          pub", ""},
    {"refusal", "550 /nowhere: No such file or directory", ""},
    {"header of another code", "213-Status follows:", ""},
    {"header with a long path", "212-Status of /a b 5 c d e f", "0|212-Status|/a|b|5|/d e|f"},
    {"all blanks", std::string(60, ' '), ""},
    {"blanks and a digit", std::string(20, ' ') + "5" + std::string(20, ' '), "0|          ||||/ |"},
    {"empty", "", ""},
};

} // namespace

const std::vector<ListingSample>& listingSamples() {
    return samples;
}

} // namespace corvel
