#include "browser/ListingSamples.h"

namespace corvel {

namespace {

const std::vector<ListingSample> samples = {
    // Fields with single blanks, as servers list that print the date without padding.
    {"file", "-rw-r--r-- 1 bob staff 512 Jan 5 12:34 readme.txt",
     "2|-rw-r--r--|bob|staff|512|01/5 12:34|readme.txt"},
    {"directory with a year", "drwxr-x--- 12 bob staff 4096 Feb 29 2020 pub",
     "0|drwxr-x---|bob|staff|4096|02/29 2020|pub"},
    {"link", "lrwxrwxrwx 1 u g 10 Jan 5 12:00 name -> /target",
     "1|lrwxrwxrwx|u|g|10|01/5 12:00|name -> /target"},
    {"link without a target", "lrwxrwxrwx 1 u g 10 Mar 15 12:00 name",
     "1|lrwxrwxrwx|u|g|10|03/15 12:00|name"},
    {"parent", "drwxr-xr-x 2 root root 4096 Dec 31 23:59 ..", "0|drwxr-xr-x|root|root|4096|12/31 23:59|.."},
    {"the directory itself", "drwxr-xr-x 2 root root 4096 Dec 31 23:59 .", ""},
    {"upper-case month", "-rw-r--r-- 1 u g 1 JAN 5 12:34 f", "2|-rw-r--r--|u|g|1|01/5 12:34|f"},
    {"month of another language", "-rw-r--r-- 1 u g 1 Mai 5 12:34 f", "2|-rw-r--r--|u|g|1|/5 12:34|f"},
    {"day before month", "-rw-r--r-- 1 u g 1 05 Jan 12:34 f", "2|-rw-r--r--|u|g|1|/Jan 12:34|f"},
    {"numbers for month and day", "-rw-r--r-- 1 u g 1 2020-01-05 12:34 a b", "2|-rw-r--r--|u|g|1|/12:34 a|b"},
    {"time with seconds and zone", "-rw-r--r-- 1 u g 1 2020-01-05 12:34:56.0 +0100 f",
     "2|-rw-r--r--|u|g|1|/12:34:56.0 +0100|f"},
    {"no number of links", "drwxr-xr-x user group 512 Jan 5 12:34 name", ""},

    // Columns padded as ls pads them.
    {"padded numbers", "drwxr-xr-x    2 0        0            4096 Jan 05 12:00 files",
     "0|drwxr-xr-x|0|0|4096|01/05 12:00|files"},
    {"padded owner and group", "-rw-------   1 ftp      nogroup     65536 Jun 15 08:01 core",
     "2|-rw-------|ftp|nogroup|65536|06/15 08:01|core"},
    {"padded day", "-rw-r--r-- 1 u g 1 Jan  5 12:34 f", "2|-rw-r--r--|u|g|1|01/ 5|12:34 f",
     "2|-rw-r--r--|u|g|1|01/5 12:34|f"},
    {"padded year", "-rw-r--r-- 1 u g 1 Nov 15  2019 f", "2|-rw-r--r--|u|g|1|11/15 |2019 f",
     "2|-rw-r--r--|u|g|1|11/15 2019|f"},
    {"padded day and year", "-rw-r--r-- 1 u g 1 Apr  1  2019 a  b", "2|-rw-r--r--|u|g|1|04/ 1| 2019 a  b",
     "2|-rw-r--r--|u|g|1|04/1 2019|a  b"},
    {"padded link whose day shifts", "lrwxrwxrwx 1 u g 3 Sep  9 10:00 a -> b",
     "1|lrwxrwxrwx|u|g|3|09/ 9|10:00 a -> b", "1|lrwxrwxrwx|u|g|3|09/9 10:00|a -> b"},
    {"links padded on the right shift the owner away", "-rw-r--r-- 1  bob staff 512 Jan 5 12:34 f",
     "2|-rw-r--r--||bob|staff|/Jan 5|12:34 f"},
    {"tabs are no blanks", "-rw-r--r--\t1\tu\tg\t1\tJan\t5\t12:34\tf", ""},

    // One blank in front of every line.
    {"leading blank", " drwxr-xr-x   3 ftp      ftp          4096 Oct 10 10:10 incoming",
     "0|drwxr-xr-x|ftp|ftp|4096|10/10 10:10|incoming"},
    {"leading blank, padded day", " -rw-r--r--   1 ftp      ftp          1024 Aug  2  2021 old file",
     "2|-rw-r--r--|ftp|ftp|1024|08/ 2| 2021 old file", "2|-rw-r--r--|ftp|ftp|1024|08/2 2021|old file"},
    {"leading blank, itself", " drwxr-xr-x   3 ftp      ftp          4096 Oct 10 10:10 .", ""},
    {"two leading blanks", "  drwxr-xr-x   3 ftp      ftp          4096 Oct 10 10:10 incoming", ""},
    {"leading blank before a reply line", " 211-status 1 a b 5 c d e f", ""},

    // Access texts of ten characters and what some systems put behind them.
    {"access list mark", "drwxr-xr-x+ 3 u g 4096 Jan 5 12:00 shared", ""},
    {"security context mark", "-rw-r--r--. 1 u g 4096 Jan 5 12:00 f", ""},
    {"mark instead of the blank in front", " drwxr-xr-x+ 3 u g 4096 Jan 5 12:00 shared", ""},
    {"sticky and setgid", "drwxrwsrwt 3 u g 4096 Jan 5 12:00 tmp", "0|drwxrwsrwt|u|g|4096|01/5 12:00|tmp"},
    {"character device", "crw-rw-rw- 1 root root 1, 3 Jan 5 12:00 null",
     "0|crw-rw-rw-|root|root|1,|/Jan 5|12:00 null"},
    {"block device without a blank", "brw-rw---- 1 root disk 8,0 Jan 5 12:00 sda",
     "0|brw-rw----|root|disk|8,0|01/5 12:00|sda"},
    {"pipe", "prw-r--r-- 1 u g 0 Jan 5 12:00 fifo", "0|prw-r--r--|u|g|0|01/5 12:00|fifo"},
    {"socket", "srwxr-xr-x 1 u g 0 Jan 5 12:00 sock", "0|srwxr-xr-x|u|g|0|01/5 12:00|sock"},
    {"access in words", "[RWCEAFMS] 1 admin users 512 Jan 5 12:00 SYS",
     "0|[RWCEAFMS]|admin|users|512|01/5 12:00|SYS"},

    // Owners, groups and sizes.
    {"ids for owner and group", "-rw-r--r-- 1 1000 1000 0 Jan 5 12:00 empty",
     "2|-rw-r--r--|1000|1000|0|01/5 12:00|empty"},
    {"owner with a blank", "-rw-r--r-- 1 Domain Users staff 7 Jan 5 12:00 f",
     "2|-rw-r--r--|Domain|Users|staff|/Jan 5|12:00 f"},
    {"owner with a backslash", "-rw-r--r-- 1 DOM\\joe none 7 Jan 5 12:00 f",
     "2|-rw-r--r--|DOM\\joe|none|7|01/5 12:00|f"},
    {"size beyond 64 bits", "-rw-r--r-- 1 u g 99999999999999999999999 Jan 5 12:00 big",
     "2|-rw-r--r--|u|g|99999999999999999999999|01/5 12:00|big"},
    {"size in words", "-rw-r--r-- 1 u g 1.5K Jan 5 12:00 f", ""},
    {"negative size", "-rw-r--r-- 1 u g -1 Jan 5 12:00 f", "2|-rw-r--r--|u|g|-1|01/5 12:00|f"},

    // Names.
    {"blanks inside", "-rw-r--r-- 1 u g 1 Jan 5 12:00 a  b   c", "2|-rw-r--r--|u|g|1|01/5 12:00|a  b   c"},
    {"blank in front", "-rw-r--r-- 1 u g 1 Jan 5 12:00  a", "2|-rw-r--r--|u|g|1|01/5 12:00| a"},
    {"blank at the end", "-rw-r--r-- 1 u g 1 Jan 5 12:00 a ", "2|-rw-r--r--|u|g|1|01/5 12:00|a "},
    {"one blank alone", "-rw-r--r-- 1 u g 1 Jan 5 12:00  ", "2|-rw-r--r--|u|g|1|01/5 12:00| "},
    {"looks like an entry", "-rw-r--r-- 1 u g 1 Jan 5 12:00 -rw-r--r-- 1 u g 1 Jan 5 12:00 f",
     "2|-rw-r--r--|u|g|1|01/5 12:00|-rw-r--r-- 1 u g 1 Jan 5 12:00 f"},
    {"quotes and percent signs", "-rw-r--r-- 1 u g 1 Jan 5 12:00 \"%(name)\" | `x`;",
     "2|-rw-r--r--|u|g|1|01/5 12:00|\"%(name)\" | `x`;"},
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
    {"machine listing", "type=dir;modify=20200105123400;perm=el; pub", ""},
    {"refusal", "550 /nowhere: No such file or directory", ""},
    {"header of another code", "213-Status follows:", ""},
    {"trailer of another code", "213 End of status", ""},
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
