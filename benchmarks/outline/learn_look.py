#!/usr/bin/env python3
"""Teaches the network of CloseLook whether a sheet ends just where an outline says, and writes its weights.

    look_examples a.bin 260 6000000; look_examples b.bin 6000 6200000 small    # scenes, see looks.cpp
    learn_look.py MINUTES HEADER SCENES...

The weights in use: 27 minutes with such scenes, 100 of 8000000 and 480 more of each kind of desk from before the map
knew sheets upon others and without a second round, one thread (39 thousand batches).

The likelihood that the right outlines of a scene, or none where none is right, have among all is made most: what the
network says of each is added to the logarithm of the certainty that it had before, "no sheet" keeps its own. In half of
the scenes what was certain before counts less, down to nothing, so that the network learns to see for itself what the
judge knows already, and errs at other places than the judge does. By AdamW
(Loshchilov and Hutter 2019) with batch normalisation (Ioffe and Szegedy 2015), which is folded into the weights. Each
25th scene is kept aside and judged. Needs the packages of the group `learn` (scripts/setup.sh).
"""
import math
import random
import sys
import time

import numpy
import torch
from torch import nn
from torch.nn import functional

import learn_map

SIDE = 48
PATCH = 4 * SIDE * SIDE
RECORD = 8 + PATCH
SCENES = 24  # of a batch
GOOD = 0.93  # overlap
LEAST_NONE, LEAST = 1e-4, 1e-6
# Name, channels in and out, step. The order is that of CloseLook.cpp.
LAYERS = [
    ("fine", 4, 12, 2),
    ("middle", 12, 20, 2),
    ("coarse", 20, 28, 2),
    ("coarser", 28, 28, 2),
    ("whole", 28, 24, 1),
    ("score", 24, 1, 1),
]


class LookNet(learn_map.Folding, nn.Module):
    last = "score"

    def __init__(self):
        super().__init__()
        self.layers, self.norms = nn.ModuleDict(), nn.ModuleDict()
        for name, channels_in, channels_out, step in LAYERS:
            self.layers[name] = nn.Conv2d(channels_in, channels_out, 3, step, 1, bias=name == self.last)
            if name != self.last:
                self.norms[name] = nn.BatchNorm2d(channels_out)
        nn.init.zeros_(self.layers[self.last].weight)
        nn.init.zeros_(self.layers[self.last].bias)
        self.dropped = nn.Dropout(0.2)

    def forward(self, x):
        for name in self.norms:
            x = functional.relu(self.norms[name](self.layers[name](x)))
        return self.layers[self.last](self.dropped(x))[:, 0, 1, 1]


def read(path):
    """Of each scene that has outlines their overlaps, certainties and patches."""
    data, at, scenes = numpy.memmap(path, numpy.uint8, "r"), 0, []
    while at < len(data):
        count = int(data[at : at + 4].view(numpy.int32)[0])
        records = data[at + 4 : at + 4 + count * RECORD].reshape(count, RECORD)
        at += 4 + count * RECORD
        if count:
            facts = numpy.ascontiguousarray(records[:, :8]).view(numpy.float32)
            scenes.append((facts[:, 0] > GOOD, facts[:, 1].clip(LEAST, 1), records[:, 8:]))
    return scenes


def varied(colours, edges):
    """The same patches mirrored, turned, in other colours and light."""
    for axis in (2, 3):
        if random.random() < 0.5:
            colours, edges = colours.flip(axis), edges.flip(axis)
    if random.random() < 0.5:
        colours, edges = colours.transpose(2, 3), edges.transpose(2, 3)
    colours = colours[:, torch.randperm(3)]
    if random.random() < 0.1:
        colours = colours.mean(1, keepdim=True).expand(-1, 3, -1, -1)
    colours = 255 * (colours / 255) ** math.exp(0.25 * random.gauss(0, 1))
    colours = colours * (1 + 0.08 * torch.randn(1, 3, 1, 1)) + 2 * random.random() * torch.randn_like(colours)
    return colours, edges * math.exp(0.25 * random.gauss(0, 1))


def look(patches, is_varied):
    """As CloseLook does."""
    planes = torch.from_numpy(patches).float().reshape(-1, SIDE, SIDE, 4).permute(0, 3, 1, 2)
    colours, edges = planes[:, :3], planes[:, 3:]
    if is_varied:
        colours, edges = varied(colours, edges)
    return torch.cat([learn_map.light_normalised(colours), edges / 48], 1)


def scores(net, scenes, is_varied=False):
    """Of each scene the scores of its outlines and, last, of no sheet; and which of them are right."""
    said = net(look(numpy.concatenate([patches for _, _, patches in scenes]), is_varied))
    counts = [len(good) for good, _, _ in scenes]
    score = torch.full((len(scenes), max(counts) + 1), -1e9)
    right = torch.zeros(score.shape, dtype=torch.bool)
    for i, (own, (good, certainty, _)) in enumerate(zip(said.split(counts), scenes)):
        worth = random.random() if is_varied and random.random() < 0.5 else 1
        score[i, : counts[i]] = worth * torch.from_numpy(certainty).log() + own
        score[i, -1] = worth * math.log(max(LEAST_NONE, 1 - certainty.sum()))
        right[i, : counts[i]] = torch.from_numpy(good)
        right[i, -1] = not good.any()
    return score, right


def judge(net, scenes):
    net.eval()
    loss, answered, correct = 0.0, 0, 0
    with torch.no_grad():
        for start in range(0, len(scenes), SCENES):
            score, right = scores(net, scenes[start : start + SCENES])
            loss += (score.logsumexp(1) - score.masked_fill(~right, -1e9).logsumexp(1)).sum().item()
            certainty, best = score.softmax(1)[:, :-1].max(1)
            answered += int((certainty >= 0.5).sum())
            correct += int(right[certainty >= 0.5].gather(1, best[certainty >= 0.5, None]).sum())
    net.train()
    return f"loss {loss / len(scenes):.4f}, {correct} of {answered} answers right in {len(scenes)} scenes"


def learn(net, scenes, aside, minutes):
    best = torch.optim.AdamW(net.parameters(), weight_decay=0.05)
    begin, told, batches = time.time(), time.time(), 0
    while True:
        random.shuffle(scenes)
        for start in range(0, len(scenes) - SCENES, SCENES):
            gone = (time.time() - begin) / (60 * minutes)
            if gone >= 1:
                return
            for group in best.param_groups:
                group["lr"] = 2e-3 * min(1, batches / 100 + 0.05) * (0.5 + 0.5 * math.cos(math.pi * gone))
            score, right = scores(net, scenes[start : start + SCENES], True)
            loss = (score.logsumexp(1) - score.masked_fill(~right, -1e9).logsumexp(1)).mean()
            best.zero_grad()
            loss.backward()
            best.step()
            batches += 1
            if time.time() - told > 60:
                told = time.time()
                print(f"{batches} batches; kept aside: {judge(net, aside)}", flush=True)


def main():
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    minutes, header, files = float(sys.argv[1]), sys.argv[2], sys.argv[3:]
    torch.manual_seed(1)
    random.seed(1)
    torch.set_num_threads(1)
    every = [scene for file in files for scene in read(file)]
    aside = every[::25]
    net = LookNet()
    print("before:", judge(net, aside))
    learn(net, [scene for i, scene in enumerate(every) if i % 25], aside, minutes)
    print("at the end:", judge(net, aside))
    learn_map.write(net, header, "closelookweights", "learn_look.py")


if __name__ == "__main__":
    main()
