/* errno is the variable _errno: a change of it is one of the C library's own. */
#ifndef _ERRNO_H
#define _ERRNO_H

#define errno _errno

#define EPERM 1
#define ENOENT 2
#define EINTR 4
#define EIO 5
#define E2BIG 7
#define EBADF 9
#define EAGAIN 11
#define ENOMEM 12
#define EACCES 13
#define EEXIST 17
#define ENOTDIR 20
#define EISDIR 21
#define EINVAL 22
#define EMFILE 24
#define ENOSPC 28
#define EPIPE 32
#define EDOM 33
#define ERANGE 34

#endif
