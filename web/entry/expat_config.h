/* How Expat is built for browsers, in place of what its own configuration finds out. */
#define XML_NS 1
#define XML_DTD 1
#define XML_GE 1
#define XML_CONTEXT_BYTES 1024
#define BYTEORDER 1234
#define HAVE_GETRANDOM 1
#define HAVE_MEMMOVE 1
#define HAVE_UNISTD_H 1
