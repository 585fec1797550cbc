#include "tests/support/user_options.h"

#include "page/options.h"
#include "platform/locations.h"
#include "platform/text.h"

#ifdef _WIN32
#include <io.h>
#include <sys/stat.h>
#else
#include "platform/posix/recorder.h"
#endif

#include <vector>

UserOptionsFile::UserOptionsFile() {
#ifndef _WIN32
    recorder.local_app_data = std::string(folder.path) + "local";
    folder_create(recorder.local_app_data.c_str());
#endif
    char path[PATH_SIZE];
    location_local_app_data(path, sizeof path);
    user_folder = std::string(path) + "\\Orvanel";
    user_file = user_folder + "\\options.xml";
    put_aside = user_file + ".aside";
    file_rename(user_file.c_str(), put_aside.c_str()); // unless a crash left one there already
    file_delete(user_file.c_str());
    folder_create((std::string(folder.path) + "program").c_str());
    text_copy(exe_location, (std::string(folder.path) + "program\\").c_str());
    options_set_defaults();
}

UserOptionsFile::~UserOptionsFile() {
    file_delete(user_file.c_str());
    file_rename(put_aside.c_str(), user_file.c_str());
    exe_location[0] = '\0';
}

std::string UserOptionsFile::text() const {
    std::vector<char> bytes;
    file_read(user_file.c_str(), &bytes);
    return {bytes.begin(), bytes.end()};
}

void UserOptionsFile::set_read_only(bool read_only) {
#ifdef _WIN32
    _chmod(user_file.c_str(), read_only ? _S_IREAD : _S_IREAD | _S_IWRITE);
#else
    folder.set_read_only("local\\Orvanel\\options.xml", read_only);
#endif
}
