/* Texts taken apart and put together with the library's functions and without. */
#include <stdio.h>
#include <string.h>
#include <ctype.h>
#include <stdlib.h>

void reverse(char *text) {
    int i = 0, j = strlen(text) - 1;
    while (i < j) {
        char kept = text[i];
        text[i++] = text[j];
        text[j--] = kept;
    }
}

int isPalindrome(const char *text) {
    const char *left = text, *right = text + strlen(text) - 1;
    while (left < right) {
        if (!isalpha(*left))
            left++;
        else if (!isalpha(*right))
            right--;
        else if (tolower(*left++) != tolower(*right--))
            return 0;
    }
    return 1;
}

void caesar(char *text, int shift) {
    for (; *text; text++) {
        if (isupper(*text))
            *text = 'A' + (*text - 'A' + shift + 26) % 26;
        else if (islower(*text))
            *text = 'a' + (*text - 'a' + shift + 26) % 26;
    }
}

char *trim(char *text) {
    char *end;
    while (isspace(*text))
        text++;
    end = text + strlen(text);
    while (end > text && isspace(end[-1]))
        end--;
    *end = '\0';
    return text;
}

int replaceAll(char *dest, const char *text, const char *from, const char *to) {
    int count = 0;
    const char *found;
    dest[0] = '\0';
    while ((found = strstr(text, from)) != NULL) {
        strncat(dest, text, found - text);
        strcat(dest, to);
        text = found + strlen(from);
        count++;
    }
    strcat(dest, text);
    return count;
}

int main(void) {
    char buffer[200], other[200], *word;
    const char *sentences[] = {"A man, a plan, a canal: Panama", "Not a palindrome", "Was it a car"};
    int i;
    strcpy(buffer, "stressed desserts");
    reverse(buffer);
    printf("%s\n", buffer);
    for (i = 0; i < 3; i++)
        printf("%s: %s\n", sentences[i], isPalindrome(sentences[i]) ? "yes" : "no");
    strcpy(buffer, "Attack at Dawn!");
    caesar(buffer, 3);
    printf("%s ", buffer);
    caesar(buffer, -3);
    printf("%s\n", buffer);
    strcpy(buffer, "  \t trimmed text \n");
    printf("[%s]\n", trim(buffer));
    printf("%d %s\n", replaceAll(other, "one fish two fish", "fish", "bird"), other);
    strcpy(buffer, "red,green;blue, ,white");
    for (word = strtok(buffer, ",; "); word != NULL; word = strtok(NULL, ",; "))
        printf("<%s>", word);
    printf("\n");
    printf("%d %d %d\n", atoi("42abc"), atoi("-7"), atoi("x"));
    printf("%s %s\n", strchr("path/to/file.c", '/'), strrchr("path/to/file.c", '/') + 1);
    printf("%d %d\n", (int)strspn("12345abc", "0123456789"), (int)strcspn("abc,def", ",;"));
    printf("%d %d %d\n", strncmp("apple", "apply", 4), strcmp("a", "b") < 0, strcmp("b", "a") > 0);
    sprintf(buffer, "%05d|%-6s|%+.2f|%x|%c", 42, "ab", 3.14159, 255, 'Z');
    printf("%s %d\n", buffer, (int)strlen(buffer));
    printf("%s\n", strpbrk("hello world", "wr"));
    printf("%d ", snprintf(buffer, 8, "%d and %s", 1234, "more"));
    printf("%s|", buffer);
    printf("%d %s\n", snprintf(other, sizeof(other), "%5.1f", 2.25), other);
    return 0;
}
