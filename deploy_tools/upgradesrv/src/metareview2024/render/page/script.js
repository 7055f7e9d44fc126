// The page reads whole without this script, which only filters, folds and copies.
(() => {
  'use strict';
  const form = document.getElementById('filter');
  if (!form) return;
  const status = document.getElementById('status');
  const filtered = document.getElementById('filtered');
  const all = (selector, inside = document) => Array.from(inside.querySelectorAll(selector));
  const fields = Array.from(form.elements).filter((field) => field.name && field.tagName !== 'BUTTON');
  const number = (count) => count.toLocaleString(document.documentElement.lang);

  // Rows by group: a place to decide is shown whole, of an element only the rows that match.
  let groups = null;
  let rows = [];

  function index() {
    groups = all('.place, .element').map((node) => {
      const group = {node, isPlace: node.className.startsWith('place'), kind: node.dataset.kind, heading: node.querySelector('h3')};
      group.rows = Array.from(node.querySelector('tbody').rows, (row) => {
        const {risk, origin, decision, since, report} = row.dataset;
        return {node: row, group, risk, origin, decision, since, report, text: null};
      });
      return group;
    });
    rows = groups.flatMap((group) => group.rows);
  }

  function textOf(row) {
    if (row.text === null) {
      row.text = `${row.group.heading.textContent} ${row.node.textContent} ${row.node.dataset.path}`.toLowerCase();
    }
    return row.text;
  }

  // A choice of the form, as it is in the fragment: key to value, keys without a value left out.
  function fromForm() {
    const choice = {};
    for (const field of fields) {
      const value = field.type === 'checkbox' ? (field.checked ? field.value : '') : field.value.trim();
      if (value) choice[field.name] = value;
    }
    return choice;
  }

  function toForm(choice) {
    for (const field of fields) {
      const value = choice[field.name] || '';
      if (field.type === 'checkbox') field.checked = value === field.value;
      else field.value = value;
    }
  }

  function decoded(text) {
    try {
      return decodeURIComponent(text);
    } catch {
      return text;
    }
  }

  function fromFragment() {
    const choice = {};
    for (const pair of location.hash.slice(1).split('&')) {
      const at = pair.indexOf('=');
      const name = pair.slice(0, at);
      if (at > 0 && fields.some((field) => field.name === name)) choice[name] = decoded(pair.slice(at + 1));
    }
    return choice;
  }

  function toFragment(choice) {
    return Object.entries(choice).map(([key, value]) => `${key}=${encodeURIComponent(value)}`).join('&');
  }

  // What the choices of the field "decision" take in, where that is more than the rows of that name.
  const isOpen = (row) => row.decision !== 'accepted';
  const decisions = {
    open: isOpen,
    decide: (row) => isOpen(row) && (row.risk === 'loss' || row.risk === 'block' || row.origin === 'both'),
  };

  function isMatch(row, choice, words) {
    return ['risk', 'origin', 'since', 'report'].every((key) => !choice[key] || row[key] === choice[key]) &&
      (!choice.kind || row.group.kind === choice.kind) &&
      (!choice.decision || (decisions[choice.decision] || ((one) => one.decision === choice.decision))(row)) &&
      words.every((word) => textOf(row).includes(word));
  }

  // Few enough rows to open the elements that they are in.
  const kFew = 200;

  function apply(choice) {
    const isFiltered = Object.keys(choice).length > 0;
    if (!groups) {
      if (!isFiltered) return say(choice, null);
      index();
    }
    const words = (choice.q || '').toLowerCase().split(/\s+/).filter(Boolean);
    let shown = 0;
    for (const group of groups) {
      let hits = 0;
      for (const row of group.rows) {
        const isHit = isMatch(row, choice, words);
        if (isHit) ++hits;
        const isHidden = !isHit && !group.isPlace;
        if (row.node.hidden !== isHidden) row.node.hidden = isHidden;
      }
      if (group.node.hidden !== !hits) group.node.hidden = !hits;
      if (!group.isPlace) shown += hits;
    }
    if (isFiltered && shown <= kFew) {
      for (const {node, isPlace} of groups) if (!isPlace && !node.hidden) node.open = true;
    }
    for (const node of all('.kind')) node.hidden = !node.querySelector('.element:not([hidden])');
    for (const node of all('.nothing')) {
      node.hidden = node.parentNode.querySelector('.place:not([hidden]), .element:not([hidden])') !== null;
    }
    say(choice, shown);
  }

  function say(choice, shown) {
    const isFiltered = Object.keys(choice).length > 0;
    status.textContent = isFiltered ? form.dataset.some.replace('{shown}', number(shown)) : form.dataset.all;
    for (const field of all('select', form)) field.classList.toggle('on', field.value !== '');
    form.elements.clear.disabled = !isFiltered;
    const said = fields.filter((field) => choice[field.name]).map((field) => {
      if (field.tagName === 'SELECT') return field.selectedOptions.length ? field.selectedOptions[0].text : choice[field.name];
      return field.type === 'checkbox' ? field.labels[0].textContent.trim() : `“${choice[field.name]}”`;
    });
    filtered.textContent = `${form.getAttribute('aria-label')}: ${said.join(' · ')} (${status.textContent})`;
    filtered.hidden = !isFiltered;
    const fragment = toFragment(choice);
    for (const link of all('a[data-cell]')) {
      if (isFiltered && decoded(link.hash.slice(1)) === decoded(fragment)) link.setAttribute('aria-current', 'true');
      else link.removeAttribute('aria-current');
    }
  }

  // What was typed last waits a moment, but never overtakes what comes after it.
  let typing;

  function changed() {
    clearTimeout(typing);
    const choice = fromForm();
    const fragment = toFragment(choice);
    try {
      history.replaceState(null, '', fragment ? `#${fragment}` : location.pathname + location.search);
    } catch {
      // Inside another page, the address may not be ours to change.
    }
    apply(choice);
  }

  // What is out of sight has a guessed height until it has been drawn once, so a place is exact only after that.
  function show(node) {
    node.scrollIntoView();
    requestAnimationFrame(() => {
      node.scrollIntoView();
      setTimeout(() => node.scrollIntoView(), 60);
    });
  }

  function follow() {
    clearTimeout(typing);
    const choice = fromFragment();
    const target = document.getElementById(decoded(location.hash.slice(1)));
    if (Object.keys(choice).length > 0) {
      toForm(choice);
      apply(fromForm());
      show(document.getElementById('all'));
      return;
    }
    if (!target || target.closest('[hidden]')) {
      toForm({});
      apply({});
    }
    if (!target) return;
    const element = target.closest('details');
    if (element) element.open = true;
    show(target);
  }

  // Where cells become blocks, some browsers forget that they were cells.
  const kRoles = [
    ['.glance, .totals, .diff, .stack', 'table'], ['thead, tbody', 'rowgroup'], ['tr', 'row'], ['td', 'cell'],
    ['th[scope=col]', 'columnheader'], ['tbody th', 'rowheader'],
  ];
  const narrow = matchMedia('(max-width: 56.24rem)');
  function nameRoles() {
    if (!narrow.matches) return;
    narrow.removeEventListener('change', nameRoles);
    for (const [selector, role] of kRoles) for (const node of all(selector)) node.setAttribute('role', role);
  }
  narrow.addEventListener('change', nameRoles);
  nameRoles();

  form.addEventListener('input', () => {
    clearTimeout(typing);
    typing = setTimeout(changed, 120);
  });
  form.addEventListener('submit', (event) => {
    event.preventDefault();
    changed();
  });
  form.elements.clear.addEventListener('click', () => {
    toForm({});
    changed();
    form.elements.q.focus();
  });
  addEventListener('hashchange', follow);

  for (const fold of all('.fold')) {
    fold.hidden = false;
    fold.addEventListener('click', (event) => {
      if (event.target.tagName === 'BUTTON') for (const node of all('.element')) node.open = event.target.value === 'open';
    });
  }

  function selectText(node) {
    const range = document.createRange();
    range.selectNodeContents(node);
    getSelection().removeAllRanges();
    getSelection().addRange(range);
  }
  const copyWords = form.dataset;
  const announcer = document.createElement('span');
  announcer.className = 'hear';
  announcer.setAttribute('role', 'status');
  document.body.append(announcer);

  function copy(code, button) {
    const answer = (text) => {
      button.textContent = announcer.textContent = text;
      setTimeout(() => {
        button.textContent = copyWords.copy;
        announcer.textContent = '';
      }, 4000);
    };
    const byHand = () => {
      selectText(code);
      answer(document.execCommand('copy') ? copyWords.copied : copyWords.selected);
    };
    if (navigator.clipboard) navigator.clipboard.writeText(code.textContent).then(() => answer(copyWords.copied), byHand);
    else byHand();
  }
  for (const code of all('.command code')) {
    const button = document.createElement('button');
    button.type = 'button';
    button.textContent = copyWords.copy;
    button.setAttribute('aria-describedby', code.closest('.place').getAttribute('aria-labelledby'));
    button.addEventListener('click', () => copy(code, button));
    code.parentNode.before(button);
  }

  let folded = [];
  addEventListener('beforeprint', () => {
    folded = all('details:not([open])');
    for (const node of folded) node.open = true;
  });
  addEventListener('afterprint', () => {
    for (const node of folded) node.open = false;
  });

  // Gets ready while nothing else is to be done, so that the first filter is as quick as the others.
  const whenIdle = window.requestIdleCallback || ((call) => setTimeout(() => call({timeRemaining: () => 10}), 50));
  let next = 0;
  function prepare(deadline) {
    if (!groups) index();
    else while (next < rows.length && deadline.timeRemaining() > 2) textOf(rows[next++]);
    if (next < rows.length) whenIdle(prepare);
  }

  form.hidden = false;
  if (location.hash) follow();
  if (!status.textContent) apply({});
  whenIdle(prepare);
})();
