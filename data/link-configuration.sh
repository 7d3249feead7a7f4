#!/bin/sh
# link-configuration.sh <work directory>
#
# Makes the links beside a work directory under which the list service opens the toolkits' configuration: the
# directory's name, a backslash and the file's name, all one file name.
set -eu

directory=${1%/}
name=$(basename "$directory")
for file in ZRCToolkitV30.conf gpkiapi.conf; do
    ln -sfn "$name/$file" "$directory\\$file"
done
