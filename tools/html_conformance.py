#!/usr/bin/env python3
"""html_conformance.py [--program PROBE] [--worst N] DIR: runs the html5lib tests on the HTML engine. DIR is a
checkout of these tests.

DIR has tokenizer/*.test, tree-construction/*.dat and encoding/*.dat, or some of them. PROBE is
build/dev/bin/html_probe by default. Prints one line per suite and its first N failures; exits with 1 if there are
any.

Skipped and counted: input that is not well-formed UTF-8 (lone surrogates: decoding comes before the tokenizer),
tests for builders of XML trees, and tests with scripting on. Not compared: parse errors (the engine does not
report them), comments and doctypes in the tree (it has none), the letter case and the namespaces of foreign names,
and the template element's own document (its children are in the element).
"""
import argparse
import json
import os
import re
import subprocess
import sys

TOP = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
STATES = {'Data state': 'data', 'PLAINTEXT state': 'plaintext', 'RCDATA state': 'rcdata', 'RAWTEXT state': 'rawtext',
          'Script data state': 'script', 'CDATA section state': 'cdata'}


class Probe:
    def __init__(self, program):
        self.process = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def ask(self, what, first, second, data):
        self.process.stdin.write(f'{what} {first} {second} {len(data)}\n'.encode() + data)
        self.process.stdin.flush()
        size = int(self.process.stdout.readline())
        return self.process.stdout.read(size).decode('utf-8')


class Score:
    def __init__(self, name):
        self.name, self.passed, self.failures, self.skipped = name, 0, [], 0

    def add(self, label, data, want, got):
        if want == got:
            self.passed += 1
        else:
            self.failures.append((label, data, want, got))

    def report(self, worst):
        print(f'{self.name}: {self.passed} of {self.passed + len(self.failures)} pass, {self.skipped} left out')
        for label, data, want, got in self.failures[:worst]:
            print(f'  {label}\n    data {data!r}\n    want {want!r}\n    got  {got!r}')


def files(folder, ending):
    for top, _, names in sorted(os.walk(folder)):
        for name in sorted(names):
            if name.endswith(ending):
                yield os.path.join(top, name)


def unescaped(value):
    """Decodes the second layer of escapes of a "doubleEscaped" test."""
    if isinstance(value, str):
        return re.sub(r'\\u([0-9A-Fa-f]{4})', lambda m: chr(int(m[1], 16)), value)
    if isinstance(value, list):
        return [unescaped(x) for x in value]
    if isinstance(value, dict):
        return {unescaped(k): unescaped(v) for k, v in value.items()}
    return value


def joined(tokens):
    """The tokens without parse errors, with adjacent character tokens joined."""
    out = []
    for token in tokens:
        if token == 'ParseError':
            continue
        if token[0] == 'Character' and out and out[-1][0] == 'Character':
            out[-1] = ['Character', out[-1][1] + token[1]]
        else:
            out.append(token)
    return out


def tokenizer(probe, folder):
    score = Score('tokenizer')
    for path in files(folder, '.test'):
        with open(path, encoding='utf-8') as file:
            suite = json.load(file)
        for test in suite.get('tests', suite.get('xmlViolationTests', [])):
            if 'xmlViolationTests' in suite:
                score.skipped += 1  # for builders of XML trees
                continue
            if test.get('doubleEscaped'):
                test = {**test, 'input': unescaped(test['input']), 'output': unescaped(test['output'])}
            try:
                data = test['input'].encode('utf-8')
                json.dumps(test['output'], ensure_ascii=False).encode('utf-8')
            except UnicodeEncodeError:
                score.skipped += 1
                continue
            for state in test.get('initialStates', ['Data state']):
                answer = probe.ask('tokens', STATES[state], test.get('lastStartTag') or 'x-none', data)
                got = joined(json.loads(line) for line in answer.split('\n')[:-1])
                label = f'{os.path.basename(path)}: {test["description"]} ({state})'
                score.add(label, test['input'], joined(test['output']), got)
    return score


def sections(text):
    """The "#name" sections of each test of a .dat file."""
    test, name = {}, None
    for line in text.split('\n'):
        if line == '#data':
            if test:
                yield test
            test, name = {'data': []}, 'data'
        elif line in ('#errors', '#new-errors', '#document-fragment', '#script-on', '#script-off', '#document', '#encoding'):
            name = line[1:]
            test[name] = []
        elif name:
            test[name].append(line)
    if test:
        yield test


def tree(lines):
    """The lines of a tree as nested lists [content, children], normalized to what the engine's tree has."""
    root = ['', []]
    path = [root]
    entries = []
    for line in lines:
        if line.startswith('| ') or line == '|':
            entries.append(line[2:])
        elif entries:
            entries[-1] += '\n' + line
    for entry in entries:
        depth = (len(entry) - len(entry.lstrip(' '))) // 2
        node = [entry[2 * depth:], []]
        path = path[:depth + 1]
        path[-1][1].append(node)
        path.append(node)
    normalize(root)
    return root[1]


def normalize(node):
    children = []
    for child in node[1]:
        content = child[0]
        if content.startswith(('<!--', '<!DOCTYPE')):
            continue
        if content == 'content' and node[0] == '<template>':
            normalize(child)
            children += child[1]
            continue
        foreign = node[0].startswith(('<svg ', '<math '))
        if content.startswith('<'):
            child[0] = content.lower() if content.startswith(('<svg ', '<math ')) else content
            normalize(child)
        elif foreign and not content.startswith('"'):
            name, value = content.split('=', 1)
            child[0] = re.sub('^(xlink|xml|xmlns) ', r'\1:', name).lower() + '=' + value
        if content.startswith('"') and children and children[-1][0].startswith('"'):
            children[-1][0] = children[-1][0][:-1] + content[1:]
        else:
            children.append(child)
    attributes = sorted(x for x in children if not x[0].startswith(('<', '"')))
    node[1][:] = attributes + [x for x in children if x[0].startswith(('<', '"'))]


def tree_construction(probe, folder):
    documents, fragments = Score('tree construction, documents'), Score('tree construction, fragments')
    for path in files(folder, '.dat'):
        with open(path, encoding='utf-8', newline='') as file:
            text = file.read()
        for number, test in enumerate(sections(text), 1):
            fragment = test.get('document-fragment')
            score = documents if fragment is None else fragments
            data = '\n'.join(test['data'])
            if 'script-on' in test or os.sep + 'scripted' + os.sep in path:
                score.skipped += 1
                continue
            context = fragment[0].split(' ') if fragment else ['-', '-']
            if len(context) == 1:
                context = ['html'] + context
            lines = test['document']
            while lines and lines[-1] == '':
                lines.pop()
            got = probe.ask('tree', context[0], context[1].lower(), data.encode('utf-8'))
            score.add(f'{os.path.basename(path)} {number} {" ".join(fragment or [])}', data, tree(lines), tree(got.split('\n')[:-1]))
    return [documents, fragments]


def encoding(probe, folder):
    score = Score('encoding')
    for path in files(folder, '.dat'):
        with open(path, encoding='latin-1', newline='') as file:
            text = file.read()
        for number, test in enumerate(sections(text), 1):
            if os.sep + 'scripted' + os.sep in path:
                score.skipped += 1
                continue
            data = '\n'.join(test['data'])
            got = probe.ask('encoding', '-', '-', data.encode('latin-1'))
            score.add(f'{os.path.basename(path)} {number}', data[:200], test['encoding'][0].lower(), got.lower())
    return score


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('folder', metavar='DIR')
    parser.add_argument('--program', default=os.path.join(TOP, 'build/dev/bin/html_probe'))
    parser.add_argument('--worst', type=int, default=5)
    arguments = parser.parse_args()
    probe = Probe(arguments.program)
    scores = [tokenizer(probe, os.path.join(arguments.folder, 'tokenizer')),
              *tree_construction(probe, os.path.join(arguments.folder, 'tree-construction')),
              encoding(probe, os.path.join(arguments.folder, 'encoding'))]
    for score in scores:
        score.report(arguments.worst)
    if not any(score.passed + len(score.failures) for score in scores):
        sys.exit(f'no tests in {arguments.folder}')
    sys.exit(1 if any(score.failures for score in scores) else 0)


if __name__ == '__main__':
    main()
