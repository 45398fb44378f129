(() => {
  const {
    data, byId, make, day, clock, exact, duration, counted, spread, timeline, longTable, marked, legend, choices, choose,
    readHash, writeHash, controls, walking,
  } = Page;
  const silenceMs = data.gapMs;
  const ends = ['none', 'good', 'bad'];

  const classOf = (flow) => (flow === 'search' ? 'search-flow' : flow); // "search" is the form's
  const flows = data.flows.map(([word, title, withoutEnd]) => ({ word, title, withoutEnd, lane: null, runs: [] }));
  const runs = data.runs.map(([flow, title, end, text, begin, last, until], index) => (
    { index, flow: flows[flow], title, end: ends[end], text, begin, last, until, records: [], longest: 0 }));
  const records = data.records.map(([ms, run, flow, line, where, message, meaning], index) => (
    { index, ms, run: run < 0 ? null : runs[run], flow: flows[flow], line, where: data.functions[where] || '',
      message, meaning, since: null }));

  let before = null;
  for (const record of records) {
    const { run } = record;
    const previous = run ? run.records[run.records.length - 1] : before;
    if (previous && previous.ms !== null && record.ms !== null) record.since = record.ms - previous.ms;
    if (run) {
      run.longest = Math.max(run.longest, run.records.length ? record.since : 0);
      run.records.push(record);
    } else {
      before = record;
    }
  }
  for (const run of runs) run.flow.runs.push(run);

  const isOneDay = new Set(runs.map((run) => day(run.begin))).size < 2;
  const stamp = (ms) => (isOneDay ? '' : day(ms) + ' ') + clock(ms);

  // What lasts longer than `longest` without a record is drawn as long as that.
  const longest = 5000;
  const times = Float64Array.from([...records.filter((record) => record.ms !== null).map((record) => record.ms),
    ...runs.map((run) => run.until)]).sort();
  const line = spread(times, (step) => Math.min(step, longest), longest);
  const whole = line.extent + Math.max(500, line.extent * 0.12); // the arrow and the words of what has no end
  for (const run of runs) {
    // The lane has the rest of the title.
    run.about = run.title.startsWith(run.flow.title + ' of ') ? ' · ' + run.title.slice(run.flow.title.length + 4) : '';
    run.left = line.placeOf(run.begin);
    run.right = Math.max(run.left, line.placeOf(run.end === 'none' ? run.until : run.last));
  }

  const lanes = flows.filter((flow) => flow.runs.length);
  for (const flow of lanes) {
    flow.runs.sort((a, b) => a.left - b.left);
    let reach = 0;
    flow.reach = flow.runs.map((run) => (reach = Math.max(reach, run.right)));
  }
  const walk = [...runs].sort((a, b) => a.left - b.left || a.index - b.index);
  walk.forEach((run, position) => { run.position = position; });

  let chosen = null;

  const drawRun = (run, room, scale) => {
    const width = Math.max(6, (run.right - run.left) * scale);
    const button = make('button', 'run ' + run.end);
    button.type = 'button';
    button.style.left = run.left * scale + 'px';
    button.style.width = width + 'px';
    button.title = run.title + ': ' + run.text + '\n' + day(run.begin) + ' ' + exact(run.begin);
    button.setAttribute('aria-label', stamp(run.begin) + ' ' + run.title + ': ' + run.text);
    button.tabIndex = run === (chosen || walk[0]) ? 0 : -1;
    button.dataset.mark = run.index;
    button.classList.toggle('chosen', run === chosen);
    button.classList.toggle('dim', run.matches === false);
    for (let i = 1; i < run.records.length; ++i) {
      const record = run.records[i];
      if (record.since >= silenceMs) {
        const silence = button.appendChild(make('span', 'silence'));
        const begin = line.placeOf(record.ms - record.since);
        silence.style.left = (begin - run.left) * scale + 'px';
        silence.style.width = (line.placeOf(record.ms) - begin) * scale + 'px';
      }
    }
    const label = run.end === 'none' ? 'no end, ' + duration(run.until - run.begin) + run.about : run.about.slice(3) || run.text;
    const inside = width >= 90;
    if (!inside && room - width < 40) return button;
    const text = button.appendChild(make('span', 'text ' + (inside ? 'inside' : 'outside'), label));
    text.style.left = (inside ? 0 : width) + 'px';
    text.style.maxWidth = (inside ? width - 4 : room - width - 6) + 'px';
    return button;
  };

  const drawLane = (flow, from, to, scale) => {
    const drawn = [];
    let i = flow.reach.findIndex((reach) => reach >= from);
    for (; i >= 0 && i < flow.runs.length && flow.runs[i].left <= to; ++i) {
      const run = flow.runs[i];
      const next = flow.runs[i + 1];
      if (run.right >= from) drawn.push(drawRun(run, ((next ? next.left : whole) - run.left) * scale, scale));
    }
    flow.lane.replaceChildren(...drawn);
  };

  let shownDay = '';
  const tickOf = (time, scale) => {
    const date = isOneDay || day(time) === shownDay ? '' : day(time) + ' ';
    shownDay = day(time);
    return { text: date + (scale > 0.13 ? exact(time) : clock(time)), width: date ? 160 : 90 };
  };
  const chart = timeline({
    line, whole, tickOf, mostScale: 1,
    pauseTitle: ' without a record',
    drawLanes: (from, to, scale) => {
      shownDay = '';
      for (const flow of lanes) drawLane(flow, from, to, scale);
    },
  });
  for (const flow of lanes) flow.lane = chart.addLane(classOf(flow.word) + ' flow', flow.title);

  let words = '';

  const headOf = (run) => {
    const row = make('tr', 'head ' + classOf(run.flow.word));
    const cell = row.appendChild(make('th'));
    cell.colSpan = 5;
    cell.scope = 'rowgroup';
    cell.append(make('span', 'time', day(run.begin) + ' ' + clock(run.begin) + '  '),
      marked(make('span', 'flow'), run.title, words), ': ', make('span', run.end, run.text));
    if (run.end === 'none') cell.appendChild(make('div', 'meaning', run.flow.withoutEnd));
    row.classList.toggle('chosen', run === chosen);
    return row;
  };

  const rowOf = (record) => {
    const row = make('tr', classOf(record.flow.word));
    row.id = 'record-' + record.index;
    row.tabIndex = -1;
    const { run, since } = record;
    const silent = since >= silenceMs && run !== null;
    const isLongest = silent && since === run.longest;
    const sinceCell = make('td', 'since' + (silent ? ' silence' : '') + (isLongest ? ' longest' : ''),
      since === null ? '' : (since < 0 ? '' : '+') + duration(since));
    if (isLongest) sinceCell.title = 'The longest silence of this run';
    const cell = make('td', 'record');
    cell.appendChild(marked(make('div', 'message'), record.message, words));
    if (record.meaning) cell.appendChild(marked(make('div', 'meaning'), record.meaning, words));
    row.append(make('td', 'time', exact(record.ms)), sinceCell, make('td', 'flow', record.flow.word), cell,
      make('td', 'where', record.ms === null ? '' : record.where + ':' + record.line));
    row.classList.toggle('chosen', run !== null && run === chosen);
    return row;
  };

  const table = longTable(5, (record) =>
    (record.run && record.run.records[0] === record ? [headOf(record.run), rowOf(record)] : [rowOf(record)]));

  const state = { flow: '', q: '', run: '' };
  let shown = records;

  const applyFilter = () => {
    words = state.q.trim().toLowerCase();
    const has = (text) => text.toLowerCase().includes(words);
    for (const run of runs) {
      run.hasWords = words !== '' && has(run.title);
      run.matches = false;
    }
    shown = records.filter((record) => {
      const matches = (state.flow === '' || record.flow.word === state.flow) &&
        (words === '' || (record.run !== null && record.run.hasWords) || has(record.message) || has(record.meaning) ||
          has(record.where) || exact(record.ms).includes(words));
      if (matches && record.run) record.run.matches = true;
      return matches;
    });
    choose('flow', state.flow);
    if (byId('q').value !== state.q) byId('q').value = state.q;
    table.show(shown);
    byId('count').textContent = shown.length === records.length ? counted(records.length, 'record') :
      shown.length.toLocaleString('en') + ' of ' + counted(records.length, 'record');
    chart.draw();
  };

  const chooseRun = (run) => {
    chosen = run;
    state.run = run ? String(run.index + 1) : '';
    table.refill();
    chart.draw();
  };

  const showRun = (run, focus) => {
    if (!run.matches) {
      state.flow = '';
      state.q = '';
      applyFilter();
    }
    chooseRun(run);
    chart.reveal(run.left);
    chart.draw();
    writeHash(state);
    const first = run.records.find((record) => shown.includes(record));
    table.reveal(first, 'record-' + first.index, focus);
  };

  const summary = byId('summary');
  byId('name').textContent = data.name;
  document.title = data.name;
  const open = runs.filter((run) => run.end === 'none');
  const timed = records.filter((record) => record.ms !== null);
  summary.textContent = [
    counted(records.length, 'record') + ' in ' + counted(runs.length, 'run'),
    timed.length ? day(timed[0].ms) + ' ' + clock(timed[0].ms) + ' to ' + day(timed[timed.length - 1].ms) + ' ' +
      clock(timed[timed.length - 1].ms) : '',
    open.length ? open.length.toLocaleString('en') + ' without an end' : '',
    data.left ? 'without the ' + counted(data.left, 'older record') : '',
  ].filter(Boolean).join(' · ');
  open.sort((a, b) => (b.until - b.begin) - (a.until - a.begin));
  for (const run of open.slice(0, 12)) {
    const button = make('button', '', stamp(run.begin) + ' ' + run.title + ' · ' + run.text);
    button.type = 'button';
    button.addEventListener('click', () => showRun(run, true));
    byId('open').appendChild(make('li')).appendChild(button);
  }
  if (open.length > 12) byId('open').appendChild(make('li', '', 'and ' + (open.length - 12) + ' more'));
  legend([['', 'ended well'], ['run bad', 'ended badly'], ['run none', 'no end is logged'],
    ['silence', 'a second or more of silence'], ['pause', 'time left out']]);
  choices('flow', [['', 'All', ''], ...flows.filter((flow) => records.some((record) => record.flow === flow))
    .map((flow) => [flow.word, flow.title, classOf(flow.word)])]);
  byId('time').hidden = lanes.length === 0;

  controls(state, ['flow'], applyFilter);
  chart.canvas.addEventListener('click', (event) => {
    const button = event.target.closest('[data-mark]');
    if (button) showRun(runs[button.dataset.mark], true);
  });
  walking(chart.canvas, walk.length, (index) => runs[index].position, (position) => {
    chooseRun(walk[position]);
    chart.reveal(walk[position].left);
    chart.draw();
    writeHash(state);
    return walk[position].index;
  });
  const apply = () => {
    readHash(state);
    if (!flows.some((flow) => flow.word === state.flow)) state.flow = '';
    applyFilter();
    const run = runs[Number(state.run) - 1];
    if (run) showRun(run, false); else chooseRun(null);
  };
  window.addEventListener('hashchange', apply);

  chart.setScale(chart.clampScale(0.012));
  apply();
})();
