#!/usr/bin/env bash
# convert.sh MANIFEST FOLDER [SHARDS]: converts the documents of a manifest by job arrays of Slurm, one task for each shard.
#
# MANIFEST has the path of a document on each line. It, the documents and FOLDER have the same paths on all nodes. FOLDER
# gets texts/, results/ with a file for each shard, results.jsonl with all results, and log/. The same command goes on
# with a run that was stopped. The exit code is that of quillow-convert --merge-results.
set -euo pipefail
manifest=$(realpath "$1")
folder=$(realpath "$2")
shards=${3:-64}
convert=${QUILLOW_CONVERT:-quillow-convert}
processors=${PROCESSORS:-1} # of a task
mkdir -p "$folder/results" "$folder/log"

submit() {
    sbatch --parsable --job-name=quillow --array="1-$shards" --requeue --cpus-per-task="$processors" \
        --output="$folder/log/%a.log" --open-mode=append <<TASK
#!/bin/sh
exec $(printf %q "$convert") -q --files-from $(printf %q "$manifest") -o $(printf %q "$folder/texts") -j $processors \\
    --shard "\$SLURM_ARRAY_TASK_ID/$shards" --resume $(printf %q "$folder/results")/"\$SLURM_ARRAY_TASK_ID.jsonl"
TASK
}

for _ in 1 2 3; do
    until job=$(submit); do sleep 5; done # the controller may be away for a moment
    until left=$(squeue --noheader --jobs="$job") && [ -z "$left" ]; do sleep 1; done
    # Whatever Slurm says of the tasks: the results say what is done.
    status=0
    "$convert" --merge-results "$folder/results.jsonl" --files-from "$manifest" "$folder"/results/*.jsonl || status=$?
    [ "$status" -eq 5 ] || exit "$status" # 5: documents have no result yet
done
exit "$status"
