/*
 * textof FILE...: prints the text of each document.
 *
 *     cc textof.c $(pkg-config --cflags --libs quillowtext) -o textof
 */
#include <quillowtext.h>

#include <stdio.h>
#include <stdlib.h>

/* The whole file in memory that the caller frees; NULL on failure. */
static char* read_file(const char* path, size_t* size) {
    FILE* file = fopen(path, "rb");
    size_t room = 65536;
    char* bytes = file != NULL ? malloc(room) : NULL;
    *size = 0;
    while (bytes != NULL) {
        size_t got = fread(bytes + *size, 1, room - *size, file);
        char* larger;
        *size += got;
        if (*size < room) break;
        larger = realloc(bytes, room *= 2);
        if (larger == NULL) free(bytes);
        bytes = larger;
    }
    if (file != NULL) {
        int is_bad = ferror(file);
        fclose(file);
        if (is_bad) {
            free(bytes);
            bytes = NULL;
        }
    }
    return bytes;
}

/* Prints the text, or why there is none. Returns whether there is one. */
static int print_text(const char* path) {
    quillow_options options = QUILLOW_OPTIONS_INIT;
    const quillow_result* result;
    size_t size;
    int has_text;
    char* bytes = read_file(path, &size);
    if (bytes == NULL) {
        perror(path);
        return 0;
    }
    options.flags = QUILLOW_LINKS;
    result = quillow_extract(bytes, size, &options);
    free(bytes); /* the result has a text of its own */
    has_text = result->text != NULL;
    if (has_text) fwrite(result->text, 1, result->text_size, stdout);
    if (result->reason != QUILLOW_OK)
        fprintf(stderr, "%s: %s: %s\n", path, quillow_reason_name(result->reason), result->detail);
    quillow_free(result);
    return has_text;
}

int main(int argc, char** argv) {
    int i;
    int is_complete = argc > 1;
    if (argc < 2) fprintf(stderr, "textof FILE...   (quillowtext %s)\n", quillow_version());
    for (i = 1; i < argc; ++i)
        is_complete = print_text(argv[i]) && is_complete;
    return is_complete ? EXIT_SUCCESS : EXIT_FAILURE;
}
