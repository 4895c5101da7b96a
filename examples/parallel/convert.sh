#!/usr/bin/env bash
# convert.sh HOSTS MANIFEST FOLDER [SHARDS]: converts the documents of a manifest on several hosts, by GNU parallel over ssh.
#
# HOSTS has a line for each host, as parallel's --sshloginfile takes it: "1/user@host" runs one shard at a time there,
# which uses all processors. MANIFEST has the path of a document on each line. It, the documents and FOLDER have the same
# paths on all hosts. FOLDER gets texts/, results/ with a file for each shard, and results.jsonl with all results. The same
# command goes on with a run that was stopped. The exit code is that of quillow-convert --merge-results.
set -euo pipefail
hosts=$1
manifest=$(realpath "$2")
folder=$(realpath "$3")
shards=${4:-64}
convert=${QUILLOW_CONVERT:-quillow-convert}
mkdir -p "$folder/results"

for _ in 1 2 3; do
    # A shard that is done takes a moment: it finds its results. Exit code 1 says that some of its documents failed, which
    # another try would not mend.
    seq "$shards" | parallel --will-cite --sshloginfile "$hosts" --filter-hosts --retries 3 \
        "$convert -q --files-from $(printf %q "$manifest") -o $(printf %q "$folder/texts") --shard {}/$shards \
            --resume $(printf %q "$folder/results")/{}.jsonl || test \$? -eq 1" || echo "some shards did not end well" >&2
    status=0
    "$convert" --merge-results "$folder/results.jsonl" --files-from "$manifest" "$folder"/results/*.jsonl || status=$?
    [ "$status" -eq 5 ] || exit "$status" # 5: documents have no result yet
done
exit "$status"
