/* printf, fprintf, sprintf, vprintf, vfprintf, vsprintf, scanf, fscanf, sscanf, fgets, gets and
   fread are words of the language. */
#ifndef _STDIO_H
#define _STDIO_H

#include <stddef.h>

#define EOF _EOF
#define BUFSIZ _BUFSIZ
#define FILENAME_MAX _FILENAME_MAX
#define FOPEN_MAX _FOPEN_MAX
#define TMP_MAX _TMP_MAX
#define L_tmpnam _L_tmpnam
#define SEEK_SET 0
#define SEEK_CUR 1
#define SEEK_END 2
#define _IOFBF 0
#define _IOLBF 1
#define _IONBF 2

#define stdin _stdin
#define stdout _stdout
#define stderr _stderr

typedef long long fpos_t;

/* A text of any length first, then as much of it as fits. */
static string_t __formatted;
int __storeText(char *s, size_t n, string_t text);
#define snprintf(s, n, ...) (sprintf(__formatted, __VA_ARGS__), __storeText(s, n, __formatted))
#define vsnprintf(s, n, format, list) \
    (vsprintf(__formatted, format, list), __storeText(s, n, __formatted))

#define fopen(path, mode) _fopen(path, mode)
#define freopen(path, mode, stream) _freopen(path, mode, stream)
#define fclose(stream) _fclose(stream)
#define fflush(stream) _fflush(stream)
#define fseek(stream, offset, origin) _fseek(stream, offset, origin)
#define ftell(stream) _ftell(stream)
#define fgetpos(stream, place) _fgetpos(stream, place)
#define fsetpos(stream, place) _fsetpos(stream, place)
#define rewind(stream) _fseek(stream, 0L, SEEK_SET)
#define feof(stream) _feof(stream)
#define ferror(stream) _ferror(stream)
#define clearerr(stream) _clearerr(stream)
#define fputc(c, stream) _fputc(c, stream)
#define putc(c, stream) _putc(c, stream)
#define putchar(c) _putchar(c)
#define fputs(s, stream) _fputs(s, stream)
#define puts(s) _puts(s)
#define fgetc(stream) _fgetc(stream)
#define getc(stream) _getc(stream)
#define getchar() _fgetc(_stdin)
#define ungetc(c, stream) _ungetc(c, stream)
#define fwrite(block, size, count, stream) _fwrite(block, size, count, stream)
#define setvbuf(stream, buffer, mode, size) _setvbuf(stream, buffer, mode, size)
#define setbuf(stream, buffer) \
    _setvbuf(stream, buffer, (buffer) ? _IOFBF : _IONBF, (buffer) ? BUFSIZ : 0)
#define remove(path) _remove(path)
#define rename(from, to) _rename(from, to)
#define tmpfile() _tmpfile()
#define tmpnam(s) _tmpnam(s)
#define perror(s) _perror(s)
#define fileno(stream) _fileno(stream)
#define popen(command, mode) _popen(command, mode)
#define pclose(stream) _pclose(stream)

#endif
