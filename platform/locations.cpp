#include "platform/locations.h"

char exe_location[PATH_SIZE];
char object_dir_location[PATH_SIZE];
char page_template_dir_location[PATH_SIZE];
char page_dir_location[PATH_SIZE];
